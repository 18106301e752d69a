#include "kivifc/Site/ExpressHtml.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressKeywords.h"
#include "kivifc/Site/ExpressWords.h"
#include "kivifc/Site/LocalNames.h"
#include "kivifc/Site/RedeclaredName.h"

#include <string>
#include <utility>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// Whose attributes come after a point, when what is before it has this type or is an element of it; null for
/// a type that has none of its own.
const Entity* pEntityOf(const ObjectBase* type) {
    // No chain of types that a schema has is as long; one in a circle is endless.
    constexpr int LengthMax = 100;
    for (int length = 0; type && length < LengthMax; ++length) {
        if (const auto* entity = Entity::pFrom(type))
            return entity;
        if (const auto* named = Type::pFrom(type)) {
            type = named->pUnderlying();
            continue;
        }
        const auto* aggregate = DataTypeBase::pFrom(type);
        type = aggregate && DataTypeListInterface::pFrom(aggregate) ? aggregate->pBaseType() : nullptr;
    }
    return nullptr;
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

    /// An index is passed over, whatever is in it: what comes after it belongs to what came before it.
    void vSymbolTake(char symbol) {
        const auto* before = std::exchange(pBefore_, nullptr);
        isAfterPoint_ = symbol == '.';
        if (isAfterPoint_)
            pBefore_ = before;
        if (symbol == '[')
            indexed_.push_back(before);
        if (symbol != ']' || indexed_.empty())
            return;
        pBefore_ = indexed_.back();
        indexed_.pop_back();
    }

    void vWordWrite(std::string_view word, bool isLocal) {
        const auto upper = ascii::sUpperCase(word);
        const bool isMember = std::exchange(isAfterPoint_, false);
        const auto* before = std::exchange(pBefore_, nullptr);
        if (isMember) {
            if (!boMemberWrite(word, upper, before))
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
            pBefore_ = pEntityOf(model_.getSchema().pObjectFromName(type));
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
        if (const auto* entity = Entity::pFrom(before))
            return boAttributeWrite(word, upper, *entity);
        if (const auto* type = Type::pFrom(before)) {
            const auto* items = dynamic_cast<const DataTypeEnum*>(type->pUnderlying());
            if (items && items->boContains(word))
                return boLinkWrite(model_.getAddresses().of(*type).row(word), word);
        }
        return false;
    }

    /// An explicit, inverse or derived attribute of the entity or above; a name after it is one of its type.
    bool boAttributeWrite(std::string_view word, const std::string& upper, const Entity& entity) {
        if (const auto* attribute = entity.pAttributeFromNameUpper(upper, true)) {
            pBefore_ = pEntityOf(attribute->pFirstType());
            return boRowWrite(attribute->getEntity(), attribute->getName(), word);
        }
        if (const auto* inverse = entity.pAttributeInverseFromNameUpper(upper, true)) {
            pBefore_ = inverse->pReferredEntity();
            return boRowWrite(inverse->getEntity(), inverse->getName(), word);
        }
        const auto derived = model_.derivedOf(entity, upper);
        if (!derived.value)
            return false;
        pBefore_ = pEntityOf(derived.type);
        return boRowWrite(*derived.entity, derived.value->getName(), word);
    }

    bool boRowWrite(const Entity& entity, std::string_view name, std::string_view word) {
        return boLinkWrite(model_.getAddresses().of(entity).row(ownNameOf(name)), word);
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
    LocalNames locals_;
    const ObjectBase* pBefore_ = nullptr;
    // What is before each index that is open.
    std::vector<const ObjectBase*> indexed_;
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
