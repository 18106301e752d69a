#include "kivifc/Pictures/EntityPicture.h"

#include "kiv/Kit/Express/ExpressTypeText.h"
#include "kiv/Kit/Express/ExpressionText.h"
#include "kivifc/Documents/ConfigFile.h"
#include "kivifc/Pictures/TextTable.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Program/OneLine.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kivifc {

namespace {

using namespace ifc::def::schema;

/// From the topmost supertype down to the entity itself.
std::vector<const Entity*> lineOf(const Entity& entity) {
    std::vector<const Entity*> line;
    for (const auto* each = &entity; each; each = each->pSupertype())
        line.push_back(each);
    std::ranges::reverse(line);
    return line;
}

std::string sNames(std::span<const Entity* const> entities, const char* separator) {
    std::vector<std::string_view> names;
    names.reserve(entities.size());
    for (const auto* entity : entities)
        names.push_back(entity->getName());
    return fmt::format("{}", fmt::join(names, separator));
}

/// In braces; empty when the configuration does not say anything.
template <class Attribute>
std::string sRepresented(const Attribute& attribute) {
    const auto text = sConfigured(attribute);
    return text.empty() ? text : fmt::format("  {{{}}}", text);
}

/// As written, then what that resolves to when that says more.
std::string sTyped(const Attribute& attribute) {
    const auto text = std::string(attribute.getTypeText());
    auto resolved = kit::sTypeResolved(attribute.pFirstType());
    if (resolved.starts_with(text))
        return resolved;
    return fmt::format("{} -> {}", text, resolved);
}

std::string sAttribute(const Attribute& attribute) {
    return fmt::format("{} : {}{}{}", attribute.getName(), attribute.isOptional() ? "OPTIONAL " : "",
                       sTyped(attribute), sRepresented(attribute));
}

/// An attribute by the entity that declares it; empty for null.
std::string sDeclared(const Attribute* attribute) {
    return attribute ? fmt::format("{}.{}", attribute->getEntity().getName(), attribute->getName())
                     : std::string();
}

/// The attribute that refers back.
std::string sReferred(const AttributeInverse& inverse) {
    const auto declared = sDeclared(inverse.pReferredAttribute());
    return declared.empty() ? "?" : declared;
}

std::string sInverse(const AttributeInverse& inverse) {
    return fmt::format("{} : {} FOR {} -> {}{}", inverse.getName(), inverse.getTypeText(),
                       inverse.getForAttributeName(), sReferred(inverse), sRepresented(inverse));
}

/// The text on one line: blanks and tabs in a row become one blank, but those in a literal stay.
std::string sSpaced(std::string_view text) {
    std::string line;
    bool isLiteral = false;
    for (const char byte : text) {
        const bool isBlank = !isLiteral && (byte == ' ' || byte == '\t');
        isLiteral ^= byte == '\'';
        if (!isBlank)
            line += byte;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    return line;
}

/// What a derived attribute is made of, as the schema writes it.
struct Derivation {
    explicit Derivation(const DeriveValue& value) {
        constexpr std::string_view Assign = ":=";
        const auto rest = value.getRest();
        const auto end = std::min(rest.find(Assign), rest.size());
        type = sPart(rest.substr(0, end));
        expression = sPart(rest.substr(std::min(end + Assign.size(), rest.size())));
    }

    std::string type;
    std::string expression;

private:
    static std::string sPart(std::string_view text) { return sSpaced(ascii::trimmed(text, " \t;")); }
};

std::string sDerived(const DeriveValue& value) {
    const Derivation derivation(value);
    return fmt::format("{} : {}{}{}", value.getName(), derivation.type,
                       derivation.expression.empty() ? "" : " := ", derivation.expression);
}

std::string sUnique(const UniqueRule& rule) {
    return fmt::format("{} : {}", rule.label, fmt::join(rule.attributeNames, ", "));
}

std::string sWhere(const ParsedRule& rule, const kit::ExpressionStyle& style) {
    return fmt::format("{} : {}", rule.label.getView(), kit::sExpressionAs(*rule.expression, style));
}

std::span<const DeriveValue> derivedOf(const Entity& entity) {
    if (!entity.pDerive())
        return {};
    return entity.pDerive()->getValues();
}

std::span<const UniqueRule> uniqueOf(const Entity& entity) {
    if (!entity.pUnique())
        return {};
    return entity.pUnique()->getRules();
}

ParsedRules whereOf(const Entity& entity) {
    return entity.pWhere() ? entity.pWhere()->getRules() : ParsedRules();
}

/// Writes what all entities of a line declare of one kind, each under its name; nothing when none does. The
/// lines are written one by one: each may name an entity whose name is as long as the schema.
class Section {
public:
    Section(const char* title, const std::vector<const Entity*>& line, Output& output) :
        title_(title), line_(line), output_(output) {}

    /// `itemsOf` gives the items of an entity.
    template <class ItemsOf, class Line>
    void vWrite(const ItemsOf& itemsOf, const Line& sLine) {
        for (const auto* entity : line_) {
            const auto& items = itemsOf(*entity);
            if (!items.empty())
                vHeadWrite(*entity);
            for (const auto& item : items)
                output_.vWrite(fmt::format("    {}\n", sOneLine(sLine(item))));
        }
    }

private:
    void vHeadWrite(const Entity& entity) {
        if (const auto* title = std::exchange(title_, nullptr))
            output_.vWrite(fmt::format("{}\n", title));
        output_.vWrite(fmt::format("  {}\n", entity.getName()));
    }

    // Null once it is written.
    const char* title_;
    const std::vector<const Entity*>& line_;
    Output& output_;
};

/// The text, or null when there is none.
Json textJson(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

template <class Attribute>
Json attributeHeadJson(const Attribute& attribute) {
    return {{"entity", attribute.getEntity().getName()},
            {"name", attribute.getName()},
            {"type", attribute.getTypeText()},
            {"representation", textJson(sConfigured(attribute))}};
}

Json itemJson(const Attribute& attribute) {
    auto json = attributeHeadJson(attribute);
    json["optional"] = attribute.isOptional();
    json["resolved"] = kit::sTypeResolved(attribute.pFirstType());
    return json;
}

Json itemJson(const AttributeInverse& inverse) {
    auto json = attributeHeadJson(inverse);
    json["for"] = inverse.getForAttributeName();
    json["refersTo"] = textJson(sDeclared(inverse.pReferredAttribute()));
    return json;
}

Json derivedJson(const Entity& entity, const DeriveValue& value) {
    const Derivation derivation(value);
    return {{"entity", entity.getName()},
            {"name", value.getName()},
            {"type", derivation.type},
            {"expression", derivation.expression},
            {"redeclares", textJson(sDeclared(value.pRedeclared()))}};
}

Json uniqueJson(const Entity& entity, const UniqueRule& rule) {
    return {{"entity", entity.getName()}, {"label", rule.label}, {"attributes", rule.attributeNames}};
}

Json whereJson(const Entity& entity, const ParsedRule& rule, const kit::ExpressionStyle& style) {
    return {{"entity", entity.getName()},
            {"label", rule.label.getView()},
            {"expression", kit::sExpressionAs(*rule.expression, style)}};
}

/// Writes lists of what all entities of a line declare of one kind.
class Lists {
public:
    Lists(const std::vector<const Entity*>& line, JsonWriter& writer) : line_(line), writer_(writer) {}

    /// `itemsOf` gives the items of an entity, `jsonOf` the JSON of one of them.
    template <class ItemsOf, class JsonOf>
    void vWrite(const char* key, const ItemsOf& itemsOf, const JsonOf& jsonOf) {
        writer_.vKey(key);
        writer_.vArrayBegin();
        for (const auto* entity : line_) {
            for (const auto& item : itemsOf(*entity))
                vJsonWrite(jsonOf(*entity, item), writer_);
        }
        writer_.vArrayEnd();
    }

private:
    const std::vector<const Entity*>& line_;
    JsonWriter& writer_;
};

void vNamesWrite(const char* key, std::span<const Entity* const> entities, JsonWriter& writer) {
    writer.vKey(key);
    writer.vArrayBegin();
    for (const auto* entity : entities)
        writer.vValue(entity->getName());
    writer.vArrayEnd();
}

} // namespace

void vEntityPictureWrite(const Entity& entity, Output& output, const kit::ExpressionStyle& style) {
    const auto line = lineOf(entity);
    output.vWrite(sTableLine(
        "entity", fmt::format("{}{}", entity.getName(), entity.isAbstract() ? " (abstract)" : "")));
    output.vWrite(sTableLine("line", sNames(line, " > ")));
    if (!entity.getSubtypes().empty())
        output.vWrite(sTableLine("subtypes", sNames(entity.getSubtypes(), ", ")));
    Section("attributes", line, output)
        .vWrite([](const Entity& each) { return each.getAttributes(); }, sAttribute);
    Section("derived", line, output).vWrite(derivedOf, sDerived);
    Section("inverses", line, output)
        .vWrite([](const Entity& each) { return each.getAttributesInverse(); }, sInverse);
    Section("unique", line, output).vWrite(uniqueOf, sUnique);
    Section("where", line, output).vWrite(whereOf, [&style](const ParsedRule& rule) {
        return sWhere(rule, style);
    });
}

void vEntityPictureWrite(const Entity& entity, JsonWriter& writer, const kit::ExpressionStyle& style) {
    const auto line = lineOf(entity);
    const auto attributeJson = [](const Entity&, const auto& attribute) { return itemJson(attribute); };
    writer.vMember("name", entity.getName());
    writer.vMember("abstract", entity.isAbstract());
    vNamesWrite("line", line, writer);
    vNamesWrite("subtypes", entity.getSubtypes(), writer);
    Lists lists(line, writer);
    lists.vWrite(
        "attributes", [](const Entity& each) { return each.getAttributes(); }, attributeJson);
    lists.vWrite("derived", derivedOf, derivedJson);
    lists.vWrite(
        "inverses", [](const Entity& each) { return each.getAttributesInverse(); }, attributeJson);
    lists.vWrite("unique", uniqueOf, uniqueJson);
    lists.vWrite("where", whereOf, [&style](const Entity& each, const ParsedRule& rule) {
        return whereJson(each, rule, style);
    });
}

} // namespace kiv::kivifc
