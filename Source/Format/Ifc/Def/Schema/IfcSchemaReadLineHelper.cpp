#include "Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include "Host/KivException.h"

#include <algorithm>
#include <istream>

namespace kiv::ifc::def::schema {

namespace {

/// std::getline that tells a failing stream from one at its end, and drops one carriage return.
bool boLineRead(std::istream& stream, std::string& line) {
    // A stream already at its end leaves the string as it was.
    line.clear();
    std::getline(stream, line, '\n');
    if (stream.fail()) {
        if (!stream.eof())
            throw exception();
        return false;
    }
    if (line.ends_with('\r'))
        line.pop_back();
    return true;
}

} // namespace

bool ReadLineHelper::boNextLine(std::istream& stream) {
    return boLineRead(stream, line_);
}

bool ReadLineHelper::boNextLineAppend(std::istream& stream) {
    std::string next;
    const bool read = boLineRead(stream, next);
    line_ += next;
    return read;
}

void ReadLineHelper::vByteOrderMarkRemove() {
    if (line_.starts_with("\xEF\xBB\xBF"))
        line_.erase(0, 3);
}

void ReadLineHelper::vNextLineOfList(std::istream& stream) {
    if (!boNextLine(stream))
        throw exception();
}

std::vector<std::string> ReadLineHelper::getNamesInList(std::size_t& pos, std::istream& stream) {
    while ((pos = line_.find('(', pos)) == std::string::npos) {
        vNextLineOfList(stream);
        pos = 0;
    }
    ++pos;

    std::vector<std::string> names;
    for (;;) {
        pos = line_.find_first_not_of("\t ,", pos);
        if (pos == std::string::npos) {
            vNextLineOfList(stream);
            pos = 0;
            continue;
        }
        if (line_[pos] == ')')
            return names;
        const auto end = std::min(line_.find_first_of("\t ,)", pos), line_.size());
        names.emplace_back(line_, pos, end - pos);
        pos = end;
    }
}

std::vector<std::string> sListFromStringCommaSep(const std::string& text, std::size_t pos) {
    std::vector<std::string> items;
    while ((pos = text.find_first_not_of(" ,", pos)) != std::string::npos) {
        const auto comma = text.find(',', pos);
        if (comma == std::string::npos) {
            const auto end = std::min(text.find(';', pos), text.size());
            const auto stop = end < text.size() ? end : std::min(text.find(' ', pos), text.size());
            items.emplace_back(text, pos, stop - pos);
            break;
        }
        items.emplace_back(text, pos, comma - pos);
        pos = comma;
    }
    return items;
}

void TextLines::vLineAdd(std::string_view line) {
    text_ += line;
    text_ += '\n';
}

std::vector<std::string_view> TextLines::getLines() const {
    std::vector<std::string_view> lines;
    for (std::string_view rest = text_; !rest.empty();) {
        const auto end = rest.find('\n');
        lines.push_back(rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    return lines;
}

} // namespace kiv::ifc::def::schema
