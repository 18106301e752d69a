#include "kivifc/Pictures/CheckSummary.h"

#include "kivifc/Json/BytesJson.h"
#include "kivifc/Pictures/TextTable.h"
#include "kivifc/Program/OneLine.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace kiv::kivifc {

void CheckSummary::vAdd(const SetDocument& document) {
    ++documents_;
    documentsFailed_ += document.failure ? 1U : 0U;
    if (document.propertySet) {
        ++propertySets_;
        properties_ += document.propertySet->getProperties().size();
    }
    if (document.quantitySet) {
        ++quantitySets_;
        quantities_ += document.quantitySet->getQuantities().size();
    }
    for (const auto& record : document.errors.getRecords())
        ++recordsByMessage_[record.message];
    records_ += document.errors.getRecords().size();
    assertions_ += document.assertions.size();
    if (document.isRefused)
        refused_.emplace_back(document.pSet()->getName(), document.path);
}

std::vector<std::pair<std::string, std::size_t>> CheckSummary::messagesByCount() const {
    std::vector<std::pair<std::string, std::size_t>> messages(recordsByMessage_.begin(),
                                                              recordsByMessage_.end());
    std::ranges::stable_sort(messages, std::ranges::greater(),
                             [](const auto& message) { return message.second; });
    return messages;
}

std::string CheckSummary::sText() const {
    auto text = sTableLine("documents", documentsFailed_ == 0
                                            ? fmt::format("{}", documents_)
                                            : fmt::format("{} ({} not read)", documents_, documentsFailed_));
    text += sTableLine("property sets", fmt::format("{}", propertySets_));
    text += sTableLine("quantity sets", fmt::format("{}", quantitySets_));
    text += sTableLine("members", fmt::format("{} ({} properties, {} quantities)", properties_ + quantities_,
                                              properties_, quantities_));
    text += sTableLine("records", fmt::format("{}", records_));
    for (const auto& [message, count] : messagesByCount())
        text += fmt::format("{:>16} {}\n", count, sOneLine(message));
    text += sTableLine("refused sets", fmt::format("{}", refused_.size()));
    for (const auto& [name, path] : refused_)
        text += fmt::format("{:16} {} ({})\n", "", sOneLine(name), sOneLine(path));
    text += sTableLine("assertions", fmt::format("{}", assertions_));
    return text;
}

Json CheckSummary::getJson() const {
    Json messages = Json::object();
    for (const auto& [message, count] : messagesByCount())
        messages[message] = count;
    Json refused = Json::array();
    for (const auto& [name, path] : refused_)
        refused.push_back(withBytes({{"name", name}, {"path", path}}, "path"));
    return {{"documents", documents_},
            {"documentsFailed", documentsFailed_},
            {"propertySets", propertySets_},
            {"quantitySets", quantitySets_},
            {"properties", properties_},
            {"quantities", quantities_},
            {"records", records_},
            {"recordsByMessage", std::move(messages)},
            {"refusedSets", std::move(refused)},
            {"assertions", assertions_}};
}

} // namespace kiv::kivifc
