#include "kivifc/Site/DefinitionsFile.h"

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/EntitySets.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/ScriptText.h"
#include "kivifc/Site/SetMembers.h"
#include "kivifc/Site/Translations.h"

#include <cstddef>
#include <fmt/format.h>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using ifc::def::xml::Aliases;

constexpr PageName DefinitionsFile("assets/definitions.js");

/// Strings of a script, each once.
class Strings {
public:
    std::size_t numberOf(const std::string& text) {
        const auto [found, isNew] = numbers_.try_emplace(text, strings_.size());
        if (isNew)
            strings_.push_back(sScriptString(text, text.size()));
        return found->second;
    }
    std::string sText() const { return fmt::format("[{}]", fmt::join(strings_, ",\n")); }

private:
    std::unordered_map<std::string, std::size_t> numbers_;
    std::vector<std::string> strings_;
};

class DefinitionRows {
public:
    std::string sText(const SiteModel& model) {
        std::vector<std::string> sets;
        for (const auto& set : model.getSets()) {
            if (auto text = sSet(model, set); !text.empty())
                sets.push_back(std::move(text));
        }
        return fmt::format("window.kivDefinitions={{languages:{},texts:{},sets:[\n{}\n]}};\n",
                           languages_.sText(), texts_.sText(), fmt::join(sets, ",\n"));
    }

private:
    /// Nothing for a set that has no translations.
    std::string sSet(const SiteModel& model, const SiteSet& set) {
        auto rows = sRow("", set.set->getDefinitionAliases(), SetDefinitionMax);
        for (const auto& member : memberList(*set.set))
            rows += sRow(member.row.getText(), member.def->getDefinitionAliases(), ShortDefinitionMax);
        if (rows.empty())
            return {};
        const std::string path(model.getAddresses().of(*set.set).getPath());
        return "[" + sScriptString(path, path.size()) + rows + "]";
    }

    /// Cut where the definition itself is. Languages that the pages of entities do not offer are left out.
    std::string sRow(std::string_view anchor, const Aliases& aliases, std::size_t longest) {
        std::string values;
        for (const auto& entry : aliases.getEntries()) {
            const auto language = sLanguageTag(entry.locale.getCombined());
            if (language.empty() || entry.text.empty())
                continue;
            values += fmt::format(",{},{}", languages_.numberOf(language),
                                  texts_.numberOf(sShort(entry.text, longest)));
        }
        return values.empty() ? values : ",[" + sScriptString(anchor, anchor.size()) + values + "]";
    }

    Strings languages_;
    Strings texts_;
};

} // namespace

void vDefinitionsWrite(const SiteModel& model, SiteFolder& folder) {
    folder.vWrite(DefinitionsFile, DefinitionRows().sText(model));
}

} // namespace kiv::kivifc::site
