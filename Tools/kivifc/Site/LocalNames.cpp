#include "kivifc/Site/LocalNames.h"

#include "kivifc/Program/AsciiText.h"

#include <algorithm>

namespace kiv::kivifc::site {

namespace {

/// Whether a colon comes next, as it does after a label.
bool isLabel(ExpressWords words) {
    while (words.boNext()) {
        if (words.getKind() == ExpressWords::Kind::Comment)
            continue;
        const auto text = ascii::trimmed(words.getText(), " \t\r\n");
        if (!text.empty())
            return text.front() == ':' && !text.starts_with(":=");
    }
    return false;
}

} // namespace

bool LocalNames::boTake(const ExpressWords& words) {
    switch (words.getKind()) {
    case ExpressWords::Kind::Word:
        return boWordTake(words);
    case ExpressWords::Kind::Comment:
        break;
    case ExpressWords::Kind::String:
        vSymbolTake('\'');
        break;
    case ExpressWords::Kind::Other:
        for (const char byte : words.getText()) {
            if (!ascii::isBlank(byte))
                vSymbolTake(byte);
        }
        break;
    }
    return false;
}

void LocalNames::vSymbolTake(char symbol) {
    if (symbol == '(')
        vOpeningTake();
    else if (symbol == ')')
        vClosingTake();
    else if (symbol == ':')
        vColonTake();
    else if (symbol == ';')
        vStatementEnd();
    else if (symbol == '=')
        isType_ = false;
    else if (part_ == Part::Where)
        isBegin_ = false;
    word_.clear();
    symbol_ = symbol;
}

void LocalNames::vOpeningTake() {
    ++depth_;
    if (part_ == Part::HeaderBegin) {
        part_ = Part::Parameters;
        parametersDepth_ = depth_;
        isBegin_ = true;
    } else if (word_ == "QUERY") {
        vOpen(Scope::Query);
        next_ = Next::Variable;
    }
}

void LocalNames::vClosingTake() {
    if (!scopes_.empty() && scopes_.back().kind == Scope::Query && scopes_.back().depth == depth_)
        vClose(Scope::Query);
    if (part_ == Part::Parameters && parametersDepth_ == depth_) {
        part_ = Part::HeaderEnd;
        isType_ = false;
    }
    depth_ -= depth_ > 0 ? 1 : 0;
}

void LocalNames::vColonTake() {
    if (part_ == Part::HeaderBegin)
        part_ = Part::HeaderEnd;
    const bool isDeclared = isBegin_ && part_ != Part::Where;
    isType_ = isType_ || isDeclared || part_ == Part::HeaderEnd;
    isBegin_ = false;
    // GENERIC : T, where T is whatever type the value has.
    if (word_ == "GENERIC" || word_ == "GENERIC_ENTITY" || word_ == "AGGREGATE")
        next_ = Next::Label;
}

void LocalNames::vStatementEnd() {
    if (part_ == Part::HeaderBegin || part_ == Part::HeaderEnd)
        part_ = Part::Body;
    isBegin_ = part_ != Part::Body;
    isType_ = false;
    next_ = Next::Any;
}

bool LocalNames::boWordTake(const ExpressWords& words) {
    const char symbol = symbol_;
    symbol_ = ' ';
    const auto upper = ascii::sUpperCase(words.getText());
    word_ = upper;
    // An attribute or an item of what is before it, or the entity that it is declared in.
    if (symbol == '.' || symbol == '\\')
        return false;
    if (next_ != Next::Any)
        return boNextTake(upper);
    if (boKeywordTake(upper))
        return false;
    if (isBegin_ && (part_ == Part::Parameters || part_ == Part::Declarations))
        return upper != "VAR" && boTypedDeclare(upper);
    if (isType_ && (part_ == Part::Parameters || part_ == Part::Declarations) && !types_.empty())
        types_.back() = upper;
    if (isBegin_ && part_ == Part::Where) {
        isBegin_ = false;
        if (isLabel(words))
            return true;
    }
    return (isType_ ? labels_ : variables_).contains(upper);
}

bool LocalNames::boNextTake(const std::string& upper) {
    const auto next = next_;
    next_ = Next::Any;
    if (next == Next::RepeatVariable && (upper == "WHILE" || upper == "UNTIL"))
        return false;
    if (next != Next::Function && next != Next::Rule)
        return boDeclare(upper, next == Next::Label);
    // The name of the outermost is that of the object.
    const bool isLocal = !scopes_.empty() && boDeclare(upper);
    vOpen(Scope::Function);
    part_ = next == Next::Rule ? Part::HeaderEnd : Part::HeaderBegin;
    return isLocal;
}

bool LocalNames::boKeywordTake(const std::string& upper) {
    if (upper == "FUNCTION" || upper == "PROCEDURE") {
        next_ = Next::Function;
    } else if (upper == "RULE") {
        next_ = Next::Rule;
    } else if (upper == "LOCAL" || upper == "CONSTANT") {
        part_ = Part::Declarations;
        isBegin_ = true;
    } else if (upper == "END_LOCAL" || upper == "END_CONSTANT") {
        part_ = Part::Body;
    } else if (upper == "WHERE") {
        part_ = Part::Where;
        isBegin_ = true;
    } else if (upper == "ALIAS") {
        vOpen(Scope::Alias);
        next_ = Next::Variable;
    } else if (upper == "REPEAT") {
        vOpen(Scope::Repeat);
        next_ = Next::RepeatVariable;
    } else if (upper == "END_ALIAS") {
        vClose(Scope::Alias);
    } else if (upper == "END_REPEAT") {
        vClose(Scope::Repeat);
    } else if (upper == "END_FUNCTION" || upper == "END_PROCEDURE" || upper == "END_RULE") {
        vClose(Scope::Function);
        part_ = Part::Body;
    } else {
        return false;
    }
    return true;
}

/// a, b : IfcReal: names without a type between them have one declaration.
bool LocalNames::boTypedDeclare(const std::string& upper) {
    boDeclare(upper);
    if (types_.empty() || !types_.back().empty())
        types_.emplace_back();
    variables_[upper].back() = types_.size() - 1;
    return true;
}

bool LocalNames::boDeclare(const std::string& upper, bool isLabel) {
    names_.push_back({upper, isLabel});
    (isLabel ? labels_ : variables_)[upper].push_back(NoType);
    return true;
}

std::string_view LocalNames::typeOf(const std::string& upper) const {
    const auto known = variables_.find(upper);
    if (known == variables_.end() || known->second.back() == NoType)
        return {};
    return types_[known->second.back()];
}

void LocalNames::vQueryTypeSet(std::string_view upper) {
    if (scopes_.empty() || scopes_.back().kind != Scope::Query || scopes_.back().names >= names_.size())
        return;
    // In a text that is no EXPRESS, it may be something else than a variable.
    const auto& name = names_[scopes_.back().names];
    if (name.isLabel)
        return;
    types_.emplace_back(upper);
    variables_[name.upper].back() = types_.size() - 1;
}

void LocalNames::vOpen(Scope kind) {
    scopes_.push_back({kind, depth_, names_.size()});
    ++openCounts_[static_cast<std::size_t>(kind)];
}

/// With those inside that the text does not end.
void LocalNames::vClose(Scope kind) {
    // Or an end without its beginning would look at all scopes in vain.
    if (openCounts_[static_cast<std::size_t>(kind)] == 0)
        return;
    OpenScope ended{};
    do {
        ended = scopes_.back();
        scopes_.pop_back();
        --openCounts_[static_cast<std::size_t>(ended.kind)];
    } while (ended.kind != kind);
    const auto names = ended.names;
    depth_ = ended.depth;
    for (; names_.size() > names; names_.pop_back()) {
        auto& declared = names_.back().isLabel ? labels_ : variables_;
        const auto known = declared.find(names_.back().upper);
        known->second.pop_back();
        if (known->second.empty())
            declared.erase(known);
    }
}

} // namespace kiv::kivifc::site
