#include "kiv/Kit/Names/SchemaRelease.h"

#include "Kit/Text/AsciiText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kiv::kit {

namespace {

using ifc::def::schema::Entity;
using ifc::def::schema::Schema;

// Only IFC2X3_TC1 and IFC4_ADD2 are compared with their schemas by tests.
constexpr SchemaRelease Releases[] = {
    {"IFC2X", "IFC2X", "IFC2X_FINAL", false},
    {"IFC2X2", "IFC2X2", "IFC2X2_FINAL", false},
    {"IFC2X3", "IFC2X3", "IFC2X3", false},
    {"IFC2X3_TC1", "IFC2X3", "IFC2X3", true},
    {"IFC4", "IFC4", "IFC4", false},
    {"IFC4_ADD1", "IFC4", "IFC4", false},
    {"IFC4_ADD2", "IFC4", "IFC4", true},
    {"IFC4_ADD2_TC1", "IFC4", "IFC4", false},
    {"IFC4X1", "IFC4X1", "IFC4X1", false},
    {"IFC4X2", "IFC4X2", "IFC4X2", false},
    {"IFC4X3", "IFC4X3", "IFC4X3", false},
    {"IFC4X3_TC1", "IFC4X3", "IFC4X3_TC1", false},
    {"IFC4X3_ADD1", "IFC4X3", "IFC4X3_ADD1", false},
    {"IFC4X3_ADD2", "IFC4X3", "IFC4X3_ADD2", false},
};

/// An entity with which an edition begins: it and all later ones of the family have it, no earlier one does.
/// That it is missing decides only where its supertype, which all editions have, is there: a part of a schema
/// says nothing.
struct EditionMark {
    std::string_view release;
    std::string_view entity;
    std::string_view supertype;
};

// That these are in IFC4_ADD2 is tested; that the editions before lack them cannot be with the schemas that
// tests have. The corrigendum of IFC4_ADD2 and that of IFC2X3 bring no entity.
constexpr EditionMark Marks[] = {
    {"IFC4_ADD1", "IfcIndexedPolyCurve", "IfcBoundedCurve"},
    {"IFC4_ADD2", "IfcPolygonalFaceSet", "IfcTessellatedFaceSet"},
};

using Replacement = std::pair<std::string_view, std::string_view>;

// The longer of two that begin alike comes first.
constexpr Replacement Words[] = {
    {"TECHNICALCORRIGENDUM", "TC"},
    {"CORRIGENDUM", "TC"},
    {"ADDENDUM", "ADD"},
    {"EDITION", ""},
    {"FINAL", ""},
};

// Numbers of versions, which say the edition by their last two parts.
constexpr Replacement Versions[] = {
    {"2.3.0.0", "2X3"},   {"2.3.0.1", "2X3TC1"},   {"4.0.0.0", "4"},       {"4.0.1.0", "4ADD1"},
    {"4.0.2.0", "4ADD2"}, {"4.0.2.1", "4ADD2TC1"}, {"4.1.0.0", "4X1"},     {"4.2.0.0", "4X2"},
    {"4.3.0.0", "4X3"},   {"4.3.0.1", "4X3TC1"},   {"4.3.1.0", "4X3ADD1"}, {"4.3.2.0", "4X3ADD2"},
};

// Other names for families.
constexpr Replacement Families[] = {
    {"2X4", "4"}, {"2.3", "2X3"}, {"4.0", "4"}, {"4.1", "4X1"}, {"4.2", "4X2"}, {"4.3", "4X3"},
};

constexpr std::size_t PrefixSize = std::string_view("IFC").size();

/// Letters in upper case, digits and dots; everything else only separates words.
std::string sUpperWords(std::string_view declared) {
    std::string words;
    for (const char letter : declared) {
        if (letter >= 'a' && letter <= 'z')
            words += static_cast<char>(letter - 'a' + 'A');
        else if ((letter >= 'A' && letter <= 'Z') || isDigit(letter) || letter == '.')
            words += letter;
    }
    return words;
}

/// What remains of a name when all ways to write it are made one: "4ADD2" for IFC4_ADD2.
std::string sKey(std::string_view declared) {
    auto key = sUpperWords(declared);
    if (key.starts_with("IFC"))
        key.erase(0, PrefixSize);
    for (const auto& [word, shorter] : Words) {
        if (const auto pos = key.find(word); pos != std::string::npos)
            key.replace(pos, word.size(), shorter);
    }
    for (const auto& [version, name] : Versions) {
        if (key == version)
            return std::string(name);
    }
    for (const auto& [other, name] : Families) {
        if (key.starts_with(other))
            return key.replace(0, other.size(), name);
    }
    return key;
}

/// A release with its names as they are compared.
struct ComparedRelease {
    const SchemaRelease* release = nullptr;
    std::string key;
    /// Of `schemaName`.
    std::string schemaWords;
};

/// Each document is compared with all of them.
const std::vector<ComparedRelease>& getComparedReleases() {
    static const auto compared = [] {
        std::vector<ComparedRelease> all;
        for (const auto& release : Releases)
            all.push_back({&release, sKey(release.name), sUpperWords(release.schemaName)});
        return all;
    }();
    return compared;
}

/// The part of a key that names the family: digits, and an X with digits after it.
std::string_view familyOfKey(std::string_view key) {
    std::size_t end = 0;
    const auto digitsSkip = [&] {
        while (end < key.size() && isDigit(key[end]))
            ++end;
    };
    digitsSkip();
    if (end > 0 && end < key.size() && key[end] == 'X') {
        ++end;
        digitsSkip();
    }
    return key.substr(0, end);
}

bool isKnownFamily(std::string_view familyKey) {
    return std::ranges::any_of(Releases, [familyKey](const SchemaRelease& release) {
        return release.family.substr(PrefixSize) == familyKey;
    });
}

ReleaseMatch compareKeys(std::string_view left, std::string_view right) {
    const auto leftFamily = familyOfKey(left);
    const auto rightFamily = familyOfKey(right);
    if (!isKnownFamily(leftFamily) || !isKnownFamily(rightFamily))
        return ReleaseMatch::Unknown;
    if (leftFamily != rightFamily)
        return ReleaseMatch::Different;
    return left == right ? ReleaseMatch::Same : ReleaseMatch::OtherEdition;
}

bool hasEntity(const Schema& schema, std::string_view name) {
    return Entity::pFrom(schema.pObjectFromName(name)) != nullptr;
}

/// Takes away the editions before a mark that is there, and those from a mark on that is missing.
void vMarkApply(const Schema& schema, const EditionMark& mark, std::vector<const SchemaRelease*>& releases) {
    const auto begin = std::ranges::find(releases, mark.release, &SchemaRelease::name);
    if (begin == releases.end())
        return;
    if (hasEntity(schema, mark.entity))
        releases.erase(releases.begin(), begin);
    else if (hasEntity(schema, mark.supertype))
        releases.erase(begin, releases.end());
}

} // namespace

std::span<const SchemaRelease> getSchemaReleases() {
    return Releases;
}

const SchemaRelease* pSchemaReleaseFind(std::string_view declared) {
    const auto key = sKey(declared);
    const auto& releases = getComparedReleases();
    const auto found = std::ranges::find(releases, key, &ComparedRelease::key);
    return found == releases.end() ? nullptr : found->release;
}

ReleaseMatch compareReleases(std::string_view left, std::string_view right) {
    return compareKeys(sKey(left), sKey(right));
}

std::vector<const SchemaRelease*> getReleasesOf(const Schema& schema) {
    // The name may end with blanks, and with a carriage return where the line has no ';'.
    const auto name = sUpperWords(schema.getName());
    std::vector<const SchemaRelease*> releases;
    for (const auto& release : getComparedReleases()) {
        if (release.schemaWords == name)
            releases.push_back(release.release);
    }
    for (const auto& mark : Marks)
        vMarkApply(schema, mark, releases);
    return releases;
}

std::string sReleaseOf(const Schema& schema) {
    const auto releases = getReleasesOf(schema);
    if (releases.empty())
        return std::string(schema.getName());
    std::string names;
    for (const auto* release : releases) {
        if (release != releases.front())
            names += release == releases.back() ? " or " : ", ";
        names += release->name;
    }
    return names;
}

ReleaseMatch compareWithSchema(std::string_view declared, const Schema& schema) {
    const auto match = compareReleases(declared, schema.getName());
    if (match != ReleaseMatch::OtherEdition)
        return match;
    const auto* const release = pSchemaReleaseFind(declared);
    const auto releases = getReleasesOf(schema);
    const bool isOfSchema = release && std::ranges::find(releases, release) != releases.end();
    return isOfSchema ? ReleaseMatch::Same : match;
}

} // namespace kiv::kit
