#include "kivifc/Findings/Baseline.h"

#include "kivifc/Documents/Folder.h"
#include "kivifc/Documents/TextFile.h"
#include "kivifc/Json/BytesJson.h"
#include "kivifc/Json/Json.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;

constexpr const char* Format = "kivifc-baseline/1";

/// Absolute, so that two ways to name a file are one.
fs::path absolutePath(const std::string& path) {
    std::error_code error;
    const auto absolute = fs::absolute(path, error);
    return (error ? fs::path(path) : absolute).lexically_normal();
}

std::string sFolderOf(const std::string& path) {
    return absolutePath(path).parent_path().native();
}

std::string sListedPath(const std::string& path, const std::string& folder) {
    return absolutePath(path).lexically_proximate(folder).generic_string();
}

BaselineKey keyOf(const kit::Finding& finding, const std::string& folder) {
    return {sListedPath(finding.place.path, folder), std::string(finding.code), finding.subject,
            finding.message};
}

/// Whether the rule compares documents: then a finding goes when the other document is not looked at.
bool isAcrossDocuments(std::string_view code) {
    return code.starts_with('X') || code == "G101" || code == "D003";
}

/// What of a baseline was looked for again.
class Scope {
public:
    Scope(const BaselineScope& scope, const Baseline& baseline) : selection_(scope.selection) {
        for (const auto& path : scope.paths)
            paths_.insert(sListedPath(path, baseline.folder));
        isWhole_ = std::ranges::all_of(baseline.findings,
                                       [&](const auto& entry) { return paths_.contains(entry.first.path); });
    }

    bool boContains(const BaselineKey& key) const {
        return paths_.contains(key.path) && isSelected(selection_, key.code) &&
               (isWhole_ || !isAcrossDocuments(key.code));
    }

private:
    const Selection& selection_;
    std::set<std::string> paths_;
    bool isWhole_ = false;
};

/// Subjects and messages have the names of files in them too.
Json entryJson(const BaselineKey& key, std::size_t count) {
    Json json{{"path", key.path}, {"code", key.code}, {"subject", key.subject}, {"message", key.message}};
    for (const char* member : {"path", "subject", "message"})
        json = withBytes(std::move(json), member);
    if (count > 1)
        json["count"] = count;
    return json;
}

Baseline baselineFrom(const std::string& path, const Json& json) {
    Baseline baseline{sFolderOf(path), {}};
    for (const auto& entry : json.at("findings")) {
        const BaselineKey key{sWithBytes(entry, "path"), entry.at("code").get<std::string>(),
                              sWithBytes(entry, "subject"), sWithBytes(entry, "message")};
        baseline.findings[key] += entry.value("count", std::size_t{1});
    }
    return baseline;
}

} // namespace

std::optional<Baseline> baselineRead(const std::string& path, std::string& failure) {
    const auto file = textFileRead(path);
    if (!file.failure.empty()) {
        failure = file.failure;
        return std::nullopt;
    }
    try {
        const auto json = Json::parse(file.text);
        if (json.at("format").get<std::string>() == Format)
            return baselineFrom(path, json);
        failure = fmt::format("its format is not \"{}\"", Format);
    } catch (const Json::parse_error& error) {
        failure = fmt::format("not a baseline: no JSON from byte {} on", error.byte);
    } catch (const Json::exception&) {
        failure = "not a baseline: --write-baseline makes one";
    }
    return std::nullopt;
}

Baseline baselineOf(const std::string& path, const std::vector<kit::Finding>& findings) {
    Baseline baseline{sFolderOf(path), {}};
    for (const auto& finding : findings) {
        if (!isUnreadable(finding))
            ++baseline.findings[keyOf(finding, baseline.folder)];
    }
    return baseline;
}

std::string sBaselineWrite(const std::string& path, const Baseline& baseline) {
    std::string text;
    JsonWriter writer([&](std::string_view piece) { text += piece; });
    writer.vObjectBegin();
    writer.vMember("format", Format);
    writer.vKey("findings");
    writer.vArrayBegin();
    for (const auto& [key, count] : baseline.findings)
        vJsonWrite(entryJson(key, count), writer);
    writer.vArrayEnd();
    writer.vObjectEnd();
    writer.vEnd();
    return sFileReplace(fs::path(path), text);
}

std::size_t baselineHide(std::vector<kit::Finding>& findings, Baseline& baseline, const BaselineScope& scope,
                         std::vector<std::string>& fixed) {
    const auto isListed = [&](const kit::Finding& finding) {
        const auto entry = baseline.findings.find(keyOf(finding, baseline.folder));
        if (isUnreadable(finding) || entry == baseline.findings.end() || entry->second == 0)
            return false;
        --entry->second;
        return true;
    };
    const auto hidden = std::erase_if(findings, isListed);
    const Scope looked(scope, baseline);
    for (const auto& [key, count] : baseline.findings) {
        if (!looked.boContains(key))
            continue;
        for (std::size_t left = count; left > 0; --left)
            fixed.push_back(fmt::format("{}: {} [{}]", key.path, key.message, key.code));
    }
    return hidden;
}

} // namespace kiv::kivifc
