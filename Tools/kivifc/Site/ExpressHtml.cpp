#include "kivifc/Site/ExpressHtml.h"

#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressKeywords.h"
#include "kivifc/Site/ExpressWords.h"
#include "kivifc/Site/LocalNames.h"
#include "kivifc/Site/RedeclaredName.h"
#include "kivifc/Site/ValueMembers.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// What a parenthesis is around.
enum class Parenthesis { Group, Call, UsedIn, Query };

/// After these, a parenthesis is one around a part of an expression.
bool isBeforeGroup(std::string_view upper) {
    constexpr std::array<std::string_view, 11> Words{"",   "AND",    "CASE",  "IF",    "IN", "NOT",
                                                     "OR", "RETURN", "UNTIL", "WHILE", "XOR"};
    return std::ranges::find(Words, upper) != Words.end();
}

Parenthesis parenthesisAfter(std::string_view upper) {
    if (upper == "QUERY")
        return Parenthesis::Query;
    if (upper == "USEDIN")
        return Parenthesis::UsedIn;
    return isBeforeGroup(upper) ? Parenthesis::Group : Parenthesis::Call;
}

/// Writes one text, and remembers what the names before a point mean.
class Writer {
public:
    Writer(const SiteModel& model, const ExpressScope& scope, Html& html) :
        model_(model), scope_(scope), html_(html) {}

    void vWrite(std::string_view text) {
        for (ExpressWords words(text); words.boNext();)
            vPieceWrite(words, locals_.boTake(words));
    }

private:
    void vPieceWrite(const ExpressWords& words, bool isLocal) {
        const auto text = words.getText();
        switch (words.getKind()) {
        case ExpressWords::Kind::Word:
            return vWordWrite(text, isLocal);
        case ExpressWords::Kind::String:
            html_ << "<span class=\"str\">";
            vLiteralWrite(text);
            html_ << "</span>";
            vSymbolTake('\'');
            break;
        case ExpressWords::Kind::Comment:
            html_ << "<span class=\"com\">" << escaped(text) << "</span>";
            break;
        case ExpressWords::Kind::Other:
            html_ << escaped(text);
            for (const char byte : text) {
                if (!ascii::isBlank(byte))
                    vSymbolTake(byte);
            }
            break;
        }
    }

    void vSymbolTake(char symbol) {
        const auto* before = std::exchange(pBefore_, nullptr);
        const auto word = std::exchange(word_, {});
        isAfterPoint_ = symbol == '.';
        if (isAfterPoint_)
            pBefore_ = before;
        else if (symbol == '[')
            indexed_.push_back(before);
        else if (symbol == ']')
            vIndexEnd();
        else if (symbol == '(')
            vParenthesisBegin(before, parenthesisAfter(word));
        else if (symbol == ')')
            vParenthesisEnd(before);
        else if (symbol == '|')
            vQueryBodyBegin(before);
    }

    /// An index is passed over, whatever is in it: what comes after it belongs to what came before it.
    void vIndexEnd() {
        if (indexed_.empty())
            return;
        pBefore_ = indexed_.back();
        indexed_.pop_back();
    }

    void vParenthesisBegin(const ObjectBase* before, Parenthesis kind) {
        const auto* result = kind == Parenthesis::Call && before ? resultOf(*before) : nullptr;
        parentheses_.push_back({result, kind});
        pLiteral_ = nullptr;
    }

    /// What comes after it belongs to its value: what is in it, or what is made of that.
    void vParenthesisEnd(const ObjectBase* before) {
        if (parentheses_.empty())
            return;
        const auto [result, kind] = parentheses_.back();
        parentheses_.pop_back();
        if (kind == Parenthesis::Group)
            pBefore_ = before;
        else
            pBefore_ = kind == Parenthesis::UsedIn ? pLiteral_ : result;
    }

    /// Between the elements that are searched and what is asked of each: QUERY(x <* Elements | x.Name).
    void vQueryBodyBegin(const ObjectBase* elements) {
        if (parentheses_.empty() || parentheses_.back().kind != Parenthesis::Query)
            return;
        auto& result = parentheses_.back().result;
        // The second one is an operator, as in ||.
        if (result || !(result = pElementType(elements)))
            return;
        locals_.vQueryTypeSet(result->getNameUpper());
    }

    /// An entity is called to make an instance of it.
    const ObjectBase* resultOf(const ObjectBase& called) const {
        const auto* result = model_.getDeclaredNames().pResultOf(called);
        return result ? result : &called;
    }

    void vWordWrite(std::string_view word, bool isLocal) {
        const auto upper = ascii::sUpperCase(word);
        word_ = upper;
        const bool isMember = std::exchange(isAfterPoint_, false);
        const auto* before = std::exchange(pBefore_, nullptr);
        if (isMember) {
            if (!before || !boLinkWrite(memberOf(model_, *before, upper), word))
                html_ << escaped(word);
            return;
        }
        // Keywords are written in capitals; LENGTH is a function and Length may be an attribute.
        if (isLocal)
            vLocalWrite(word, upper);
        else if ((word == upper && isExpressKeyword(upper)) || !boNameWrite(word, upper))
            vOtherWrite(word, upper);
    }

    /// No link, but what comes after a point may be one.
    void vLocalWrite(std::string_view word, const std::string& upper) {
        html_ << escaped(word);
        if (const auto type = locals_.typeOf(upper); !type.empty())
            pBefore_ = model_.getSchema().pObjectFromName(type);
    }

    /// What is no name: a keyword, or a word that means nothing here.
    void vOtherWrite(std::string_view word, const std::string& upper) {
        if (!isExpressKeyword(upper)) {
            html_ << escaped(word);
            return;
        }
        if (upper == "SELF")
            pBefore_ = scope_.pSelf;
        html_ << "<b>" << escaped(word) << "</b>";
    }

    bool boNameWrite(std::string_view word, const std::string& upper) {
        const auto* object = model_.getSchema().pObjectFromName(word);
        if (!object)
            return boOwnWrite(word, upper) || boItemWrite(word, upper);
        pBefore_ = object;
        if (object == scope_.pDeclared)
            html_ << escaped(word);
        else
            vLinkWrite(model_.getAddresses().of(*object), word);
        return true;
    }

    /// An attribute of what the text is about.
    bool boOwnWrite(std::string_view word, const std::string& upper) {
        return scope_.pSelf && boLinkWrite(attributeOf(model_, *scope_.pSelf, upper), word);
    }

    /// An item without its type.
    bool boItemWrite(std::string_view word, const std::string& upper) {
        const auto item = model_.getDeclaredNames().onlyItem(upper);
        return boLinkWrite({item.type, item.name, nullptr}, word);
    }

    /// False for none. What comes after it is a member of its type.
    bool boLinkWrite(const ValueMember& member, std::string_view word) {
        if (!member.owner)
            return false;
        pBefore_ = member.type;
        vLinkWrite(model_.getAddresses().of(*member.owner).row(member.name), word);
        return true;
    }

    /// 'IFC4.IFCWALL' names an entity, and 'IFC4.IFCROOT.NAME' an attribute of one.
    void vLiteralWrite(std::string_view text) {
        const auto name = literalTypeName(ascii::trimmed(text, "'"));
        const auto* object = name.empty() ? nullptr : model_.getSchema().pObjectFromName(name);
        pLiteral_ = object;
        if (!object) {
            html_ << escaped(text);
            return;
        }
        const auto begin = text.find('.') + 1;
        html_ << escaped(text.substr(0, begin));
        vLinkWrite(model_.getAddresses().of(*object), name);
        html_ << escaped(text.substr(begin + name.size()));
    }

    void vLinkWrite(const Address& address, std::string_view word) {
        html_ << "<a" << href(address) << ">" << escaped(word) << "</a>";
    }

    const SiteModel& model_;
    const ExpressScope& scope_;
    Html& html_;
    LocalNames locals_;
    // The type of the value that ends here, or what the last name is; null for nothing known.
    const ObjectBase* pBefore_ = nullptr;
    // What the last string names.
    const ObjectBase* pLiteral_ = nullptr;
    // The last word in capitals, as long as no symbol has come after it.
    std::string word_;
    struct OpenParenthesis {
        const ObjectBase* result;
        Parenthesis kind;
    };
    std::vector<OpenParenthesis> parentheses_;
    // What is before each index that is open.
    std::vector<const ObjectBase*> indexed_;
    bool isAfterPoint_ = false;
};

} // namespace

void vExpressWrite(const SiteModel& model, const ExpressScope& scope, std::string_view text, Html& html) {
    Writer(model, scope, html).vWrite(text);
}

void vExpressPiecesWrite(const SiteModel& model, const ExpressScope& scope,
                         const std::vector<std::string_view>& pieces,
                         const std::function<void(std::size_t)>& vBetween, Html& html) {
    Writer writer(model, scope, html);
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        vBetween(index);
        writer.vWrite(pieces[index]);
    }
}

void vObjectLinkWrite(const SiteModel& model, const ObjectBase& object, Html& html) {
    vNameLinkWrite(html, model.getAddresses().of(object), object.getName());
}

void vAttributeLinkWrite(const SiteModel& model, const AttributeBase& attribute, Html& html) {
    const auto& entity = attribute.getEntity();
    const auto name = ownNameOf(attribute.getName());
    html << "<a" << href(model.getAddresses().of(entity).row(name)) << "><code>"
         << escaped(sShort(entity.getName())) << "." << escaped(sShort(name)) << "</code></a>";
}

} // namespace kiv::kivifc::site
