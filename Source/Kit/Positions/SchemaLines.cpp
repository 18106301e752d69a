#include "Kit/Positions/SchemaLines.h"

#include <algorithm>
#include <array>

namespace kiv::kit {

namespace {

struct Keyword {
    std::string_view begin;
    std::string_view end;
    ExpressDeclarationKind kind;
};

// In the order in which a line is searched for them.
constexpr std::array Keywords = {
    Keyword{"TYPE", "END_TYPE", ExpressDeclarationKind::Type},
    Keyword{"ENTITY", "END_ENTITY", ExpressDeclarationKind::Entity},
    Keyword{"FUNCTION", "END_FUNCTION", ExpressDeclarationKind::Function},
    Keyword{"RULE", "END_RULE", ExpressDeclarationKind::Rule},
};

bool contains(std::string_view line, std::string_view word) {
    return line.find(word) != std::string_view::npos;
}

class LineFollower {
public:
    explicit LineFollower(std::string_view text) : text_(text) {}

    SchemaLines linesRead();

private:
    bool boNextLine();
    void vSchemaFollow(SchemaLines& lines);
    SchemaStatement statementFollow(const Keyword& keyword, std::size_t pos);
    void vListPass(std::size_t pos);
    void vTypeListPass(std::size_t nameEnd);
    void vWherePass();
    void vEntityPass(SchemaStatement& statement);
    void vStatementPass(SchemaStatement& statement, const Keyword& keyword);

    std::string_view text_;
    std::string_view line_;
    std::size_t begin_ = 0;
    std::size_t next_ = 0;
};

bool LineFollower::boNextLine() {
    if (next_ >= text_.size())
        return false;
    begin_ = next_;
    const auto end = std::min(text_.find('\n', begin_), text_.size());
    line_ = text_.substr(begin_, end - begin_);
    next_ = end + 1;
    if (line_.ends_with('\r'))
        line_.remove_suffix(1);
    return true;
}

SchemaLines LineFollower::linesRead() {
    SchemaLines lines;
    bool isInComment = false;
    while (boNextLine()) {
        if (line_.starts_with("(*"))
            isInComment = !contains(line_, "*)");
        else if (line_.starts_with("*)"))
            isInComment = false;
        if (!isInComment && contains(line_, "SCHEMA"))
            vSchemaFollow(lines);
    }
    return lines;
}

/// The statements of one schema; those of an earlier one are forgotten.
void LineFollower::vSchemaFollow(SchemaLines& lines) {
    lines.begin = std::min(next_, text_.size());
    lines.statements.clear();
    while (boNextLine()) {
        const auto keyword = std::ranges::find_if(
            Keywords, [this](const Keyword& searched) { return contains(line_, searched.begin); });
        if (keyword != Keywords.end())
            lines.statements.push_back(statementFollow(*keyword, line_.find(keyword->begin)));
        else if (contains(line_, "END_SCHEMA"))
            break;
    }
    lines.end = std::min(next_, text_.size());
}

/// The name ends at the first blank, or else at the first ';', or else with the line.
std::string_view nameIn(std::string_view line, std::size_t pos) {
    const auto begin = std::min(line.find_first_not_of(' ', pos), line.size());
    auto end = line.find(' ', begin);
    if (end == std::string_view::npos)
        end = line.find(';', begin);
    return line.substr(begin, end == std::string_view::npos ? end : end - begin);
}

SchemaStatement LineFollower::statementFollow(const Keyword& keyword, std::size_t pos) {
    SchemaStatement statement;
    statement.kind = keyword.kind;
    statement.keyword = begin_ + pos;
    statement.begin = begin_;
    statement.firstLineEnd = next_;
    statement.name = nameIn(line_, pos + keyword.begin.size());
    if (keyword.kind == ExpressDeclarationKind::Type)
        vTypeListPass(static_cast<std::size_t>(statement.name.data() - line_.data()) + statement.name.size());
    if (keyword.kind == ExpressDeclarationKind::Entity)
        vEntityPass(statement);
    else
        vStatementPass(statement, keyword);
    statement.lastLine = begin_;
    statement.end = std::min(next_, text_.size());
    return statement;
}

void LineFollower::vStatementPass(SchemaStatement& statement, const Keyword& keyword) {
    while (!statement.isEnded && boNextLine()) {
        if (keyword.kind == ExpressDeclarationKind::Type && contains(line_, "WHERE"))
            vWherePass();
        statement.isEnded = contains(line_, keyword.end);
    }
}

/// Up to the first ')' after the first '(' from there, on whatever lines they are.
void LineFollower::vListPass(std::size_t pos) {
    for (const char bracket : {'(', ')'}) {
        while ((pos = line_.find(bracket, pos)) == std::string_view::npos) {
            if (!boNextLine())
                return;
            pos = 0;
        }
    }
}

/// The header of a TYPE goes on up to the end of the list of an enumeration or a selection.
void LineFollower::vTypeListPass(std::size_t nameEnd) {
    const auto sign = line_.find('=', std::min(nameEnd, line_.size()));
    if (sign == std::string_view::npos)
        return;
    const auto begin = std::min(line_.find_first_not_of(" =", sign), line_.size());
    const auto word = line_.substr(begin, line_.find(' ', begin) - begin);
    const auto keyword = word.substr(0, word.find(';'));
    if (keyword == "ENUMERATION" || keyword == "SELECT" || keyword == "SELECT\r")
        vListPass(begin + keyword.size());
}

/// Rules go on up to a line with the end of anything.
void LineFollower::vWherePass() {
    while (boNextLine()) {
        if (contains(line_, "END_"))
            return;
    }
}

/// Lines that are taken for the list of subtypes, for an attribute or for a rule are not searched for the
/// end.
void LineFollower::vEntityPass(SchemaStatement& statement) {
    constexpr std::string_view List = "SUPERTYPE OF (ONEOF";
    bool listSeen = false;
    bool subtypeSeen = false;
    bool isSubtypeOpen = false;
    bool clauseBegun = false;
    while (!statement.isEnded && boNextLine()) {
        if (const auto pos = listSeen ? std::string_view::npos : line_.find(List);
            pos != std::string_view::npos) {
            listSeen = true;
            vListPass(pos + List.size());
        }
        if (!subtypeSeen && contains(line_, "SUBTYPE OF "))
            subtypeSeen = isSubtypeOpen = true;
        isSubtypeOpen = isSubtypeOpen && !contains(line_, "(");
        if (isSubtypeOpen || (!clauseBegun && contains(line_, " : ")))
            continue;
        clauseBegun = clauseBegun || contains(line_, "INVERSE") || contains(line_, "UNIQUE") ||
                      contains(line_, "DERIVE") || contains(line_, "WHERE");
        if (contains(line_, "WHERE"))
            vWherePass();
        statement.isEnded = contains(line_, "END_ENTITY");
    }
}

} // namespace

SchemaLines schemaLines(std::string_view text) {
    auto lines = LineFollower(text).linesRead();
    lines.statements.shrink_to_fit();
    return lines;
}

} // namespace kiv::kit
