#include "kivifc/Site/ExpressHtml.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressKeywords.h"
#include "kivifc/Site/ExpressWords.h"
#include "kivifc/Site/RedeclaredName.h"

#include <algorithm>
#include <string>
#include <utility>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

std::string sUpper(std::string_view text) {
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), ascii::getUpper);
    return upper;
}

/// Writes one text, and remembers what the names before a point mean.
class Writer {
public:
    Writer(const SiteModel& model, const ExpressScope& scope, Html& html) :
        model_(model), scope_(scope), html_(html) {}

    void vWrite(std::string_view text) {
        for (ExpressWords words(text); words.boNext();)
            vPieceWrite(words);
    }

private:
    void vPieceWrite(const ExpressWords& words) {
        const auto text = words.getText();
        switch (words.getKind()) {
        case ExpressWords::Kind::Word:
            return vWordWrite(text);
        case ExpressWords::Kind::String:
            html_ << "<span class=\"str\">";
            vLiteralWrite(text);
            html_ << "</span>";
            break;
        case ExpressWords::Kind::Comment:
            html_ << "<span class=\"com\">" << escaped(text) << "</span>";
            return;
        case ExpressWords::Kind::Other:
            html_ << escaped(text);
            break;
        }
        isAfterPoint_ = text.ends_with('.');
        if (text != ".")
            pBefore_ = nullptr;
    }

    void vWordWrite(std::string_view word) {
        const auto upper = sUpper(word);
        const bool isMember = std::exchange(isAfterPoint_, false);
        const auto* before = std::exchange(pBefore_, nullptr);
        if (isMember) {
            if (!boMemberWrite(word, upper, before))
                html_ << escaped(word);
            return;
        }
        // Keywords are written in capitals; LENGTH is a function and Length may be an attribute.
        if ((word == upper && isExpressKeyword(upper)) || !boNameWrite(word, upper))
            vOtherWrite(word, upper);
    }

    /// What is no name: a keyword, or a word that means nothing here.
    void vOtherWrite(std::string_view word, const std::string& upper) {
        if (!isExpressKeyword(upper)) {
            html_ << escaped(word);
            return;
        }
        if (upper == "SELF")
            pBefore_ = scope_.pSelf;
        html_ << "<span class=\"kw\">" << escaped(word) << "</span>";
    }

    bool boNameWrite(std::string_view word, const std::string& upper) {
        const auto* object = model_.getSchema().pObjectFromName(word);
        if (!object)
            return scope_.pSelf && boMemberWrite(word, upper, scope_.pSelf);
        pBefore_ = object;
        if (object == scope_.pDeclared)
            html_ << escaped(word);
        else
            vLinkWrite(model_.getAddresses().of(*object), word);
        return true;
    }

    /// A name after a point: an attribute or an item of what is before it.
    bool boMemberWrite(std::string_view word, const std::string& upper, const ObjectBase* before) {
        const auto& addresses = model_.getAddresses();
        if (const auto* entity = Entity::pFrom(before)) {
            const AttributeBase* attribute = entity->pAttributeFromNameUpper(upper, true);
            if (!attribute)
                attribute = entity->pAttributeInverseFromNameUpper(upper, true);
            if (attribute)
                return boLinkWrite(addresses.of(attribute->getEntity()).row(ownNameOf(attribute->getName())),
                                   word);
        }
        if (const auto* type = Type::pFrom(before)) {
            const auto* items = dynamic_cast<const DataTypeEnum*>(type->pUnderlying());
            if (items && items->boContains(word))
                return boLinkWrite(addresses.of(*type).row(word), word);
        }
        return false;
    }

    /// 'IFC4.IFCWALL' names an entity, and 'IFC4.IFCROOT.NAME' an attribute of one.
    void vLiteralWrite(std::string_view text) {
        const auto name = literalTypeName(ascii::trimmed(text, "'"));
        const auto* object = name.empty() ? nullptr : model_.getSchema().pObjectFromName(name);
        if (!object) {
            html_ << escaped(text);
            return;
        }
        const auto begin = text.find('.') + 1;
        html_ << escaped(text.substr(0, begin));
        vLinkWrite(model_.getAddresses().of(*object), name);
        html_ << escaped(text.substr(begin + name.size()));
    }

    bool boLinkWrite(const Address& address, std::string_view word) {
        vLinkWrite(address, word);
        return true;
    }

    void vLinkWrite(const Address& address, std::string_view word) {
        html_ << "<a" << href(address) << ">" << escaped(word) << "</a>";
    }

    const SiteModel& model_;
    const ExpressScope& scope_;
    Html& html_;
    const ObjectBase* pBefore_ = nullptr;
    bool isAfterPoint_ = false;
};

} // namespace

void vExpressWrite(const SiteModel& model, const ExpressScope& scope, std::string_view text, Html& html) {
    Writer(model, scope, html).vWrite(text);
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
