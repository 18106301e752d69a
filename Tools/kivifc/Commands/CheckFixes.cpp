#include "kivifc/Commands/CheckFixes.h"

#include "kivifc/Documents/Folder.h"
#include "kivifc/Documents/TextFile.h"
#include "kivifc/Findings/Fixes.h"
#include "kivifc/Findings/UnifiedDiff.h"
#include "kivifc/Program/OneLine.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fmt/format.h>
#include <span>
#include <system_error>
#include <utility>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;

/// The findings of one file, which are side by side.
template <typename Findings>
auto ofOneFile(Findings& findings, std::size_t begin) {
    auto end = begin;
    while (end < findings.size() && findings[end].place.path == findings[begin].place.path)
        ++end;
    return std::span(findings).subspan(begin, end - begin);
}

/// Where a link leads to is replaced, not the link. Somebody may have changed the file since it was read.
std::string sMended(const std::string& path, const CheckedText& before, const std::string& after) {
    std::error_code error;
    const auto target = fs::canonical(path, error);
    // Standard input may be called like a file, which is not what was checked.
    if (!before.isFile || error || !fs::is_regular_file(target, error))
        return "only a file can be mended; --diff shows what would change";
    if (textFileRead(target.native()).text != before.text)
        return "the file has changed while it was checked, and is left as it is";
    return sFileReplace(target, after);
}

} // namespace

bool boTextsMend(const std::vector<kit::Finding>& findings, const std::map<std::string, CheckedText>& texts,
                 MendedTexts& mended) {
    bool isAny = false;
    for (std::size_t begin = 0; begin < findings.size();) {
        const auto file = ofOneFile(findings, begin);
        begin += file.size();
        const auto text = texts.find(file.front().place.path);
        if (text == texts.end())
            continue;
        auto fixed = fixedText(text->second.text, file);
        if (fixed.text == text->second.text)
            continue;
        auto& place = mended.try_emplace(text->first, MendedText{text->second, {}, 0}).first->second;
        place.text = std::move(fixed.text);
        place.count += static_cast<std::size_t>(std::ranges::count(fixed.isMended, true));
        isAny = true;
    }
    return isAny;
}

std::vector<std::string> unwrittenOf(const MendedTexts& mended, Console& console) {
    std::vector<std::string> unwritten;
    for (const auto& [path, text] : mended) {
        if (text.text == text.before.text)
            continue;
        if (const auto failure = sMended(path, text.before, text.text); !failure.empty()) {
            console.diagnostics.vFail(path, failure);
            unwritten.push_back(path);
            continue;
        }
        console.diagnostics.vNote(path,
                                  fmt::format("{} finding{} mended", text.count, text.count == 1 ? "" : "s"));
    }
    return unwritten;
}

void vUnmendableNote(const std::vector<kit::Finding>& findings, const std::set<std::string>& unmendable,
                     Console& console) {
    for (std::size_t begin = 0; begin < findings.size();) {
        const auto file = ofOneFile(findings, begin);
        begin += file.size();
        const auto& path = file.front().place.path;
        if (unmendable.contains(path))
            console.diagnostics.vNote(path, "is not UTF-8, so nothing in it is mended");
    }
}

bool boDiffWrite(const MendedTexts& mended, Output& output) {
    bool isAny = false;
    for (const auto& [path, text] : mended) {
        const auto diff = sUnifiedDiff(sOneLine(path), text.before.text, text.text);
        output.vWrite(diff);
        isAny = isAny || !diff.empty();
    }
    return isAny;
}

} // namespace kiv::kivifc
