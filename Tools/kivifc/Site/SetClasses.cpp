#include "kivifc/Site/SetClasses.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"

#include <unordered_map>
#include <unordered_set>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;
using ifc::def::xml::SetDef;

/// The enumeration of the predefined types of an entity; null when it has none.
const Type* pPredefinedType(const Entity& entity) {
    const auto* attribute = entity.pAttributeFromNameUpper("PREDEFINEDTYPE", true);
    return attribute ? Type::pFrom(attribute->pFirstType()) : nullptr;
}

bool hasItem(const Type& type, std::string_view name) {
    const auto* items = dynamic_cast<const DataTypeEnum*>(type.pDataType());
    return items && items->boContains(name);
}

/// The type that declares the items, so that has the rows of them, when another one is made of it.
const Type* pDeclaring(const Type* type) {
    // No chain of types that a schema has is as long; one in a circle is endless.
    constexpr int LengthMax = 100;
    for (int length = 0; type && length < LengthMax; ++length) {
        const auto* next = Type::pFrom(type->pUnderlying());
        if (!next)
            return type;
        type = next;
    }
    return nullptr;
}

void vMissingWrite(std::string_view name, Html& html) {
    html << "<code>" << escaped(sShort(name))
         << "</code> <span class=\"badge warning\">not in the schema</span>";
}

class Predefined {
public:
    /// Null for a class that is missing.
    Predefined(const SiteModel& model, const Entity* entity) :
        model_(model), type_(entity ? pPredefinedType(*entity) : nullptr), isKnown_(entity != nullptr) {}

    void vWrite(std::string_view name, Html& html) const {
        const auto* declaring = type_ && hasItem(*type_, name) ? pDeclaring(type_) : nullptr;
        if (declaring)
            vNameLinkWrite(html, model_.getAddresses().of(*declaring).row(name), name);
        else if (!isKnown_)
            html << "<code>" << escaped(sShort(name)) << "</code>";
        else
            vMissingWrite(name, html);
    }

private:
    const SiteModel& model_;
    const Type* type_;
    // Of a class that is missing, that is said of the class alone.
    bool isKnown_;
};

} // namespace

std::vector<NamedClass> namedClasses(const Schema& schema, const SetDef& set) {
    std::vector<NamedClass> classes;
    std::unordered_map<std::string_view, std::size_t> numbers;
    // Both are names of one document, so that a pair is found by its two views.
    std::unordered_map<std::string_view, std::unordered_set<std::string_view>> types;
    for (const auto& applicable : set.getApplicableClasses()) {
        const std::string_view name = applicable.getClassName();
        const auto [found, isNew] = numbers.try_emplace(name, classes.size());
        if (isNew)
            classes.push_back({name, Entity::pFrom(schema.pObjectFromName(name)), {}, false});
        auto& named = classes[found->second];
        if (applicable.getPredefinedType().empty())
            named.isWhole = true;
        else if (types[name].insert(applicable.getPredefinedType()).second)
            named.predefinedTypes.emplace_back(applicable.getPredefinedType());
    }
    return classes;
}

void vClassWrite(const SiteModel& model, const NamedClass& named, Html& html) {
    if (named.entity)
        return vObjectLinkWrite(model, *named.entity, html);
    vMissingWrite(named.name, html);
}

void vPredefinedTypeWrite(const SiteModel& model, const Entity& entity, std::string_view name, Html& html) {
    Predefined(model, &entity).vWrite(name, html);
}

void vSetClassesWrite(const SiteModel& model, const SetDef& set, Html& html) {
    vTableBegin(html, "Classes that " + sShort(set.getName()) + " applies to", {"Class", "Predefined types"});
    for (const auto& named : namedClasses(model.getSchema(), set)) {
        const auto id = "class-" + sAnchor(named.name);
        html << "<tr" << attribute("id", id) << "><th scope=\"row\">";
        vIdLinkWrite(html, id, named.name);
        vClassWrite(model, named, html);
        html << "</th><td>" << (named.isWhole ? Markup("all") : Markup(""));
        Markup separator = named.isWhole ? Markup(", also named: ") : Markup("");
        const Predefined predefined(model, named.entity);
        for (const auto& type : named.predefinedTypes) {
            html << separator;
            predefined.vWrite(type, html);
            separator = ", ";
        }
        html << "</td></tr>\n";
    }
    vTableEnd(html);
}

} // namespace kiv::kivifc::site
