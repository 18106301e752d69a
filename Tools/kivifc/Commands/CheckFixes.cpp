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

/// Whether the findings of a file were mended; `isMended` gets which.
bool boFileMend(std::span<const kit::Finding> findings, const CheckedText& before,
                std::vector<bool>& isMended, Console& console) {
    const auto fixed = fixedText(before.text, findings);
    if (fixed.text == before.text)
        return false;
    const auto& path = findings.front().place.path;
    if (const auto failure = sMended(path, before, fixed.text); !failure.empty()) {
        console.diagnostics.vFail(path, failure);
        return false;
    }
    const auto count = std::ranges::count(fixed.isMended, true);
    console.diagnostics.vNote(path, fmt::format("{} finding{} mended", count, count == 1 ? "" : "s"));
    isMended = fixed.isMended;
    return true;
}

} // namespace

void vFindingsMend(std::vector<kit::Finding>& findings, const std::map<std::string, CheckedText>& texts,
                   Console& console) {
    std::vector<kit::Finding> left;
    for (std::size_t begin = 0; begin < findings.size();) {
        const auto file = ofOneFile(findings, begin);
        begin += file.size();
        const auto text = texts.find(file.front().place.path);
        std::vector<bool> isMended(file.size(), false);
        if (text != texts.end())
            boFileMend(file, text->second, isMended, console);
        for (std::size_t number = 0; number < file.size(); ++number) {
            if (!isMended[number])
                left.push_back(std::move(file[number]));
        }
    }
    findings = std::move(left);
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

bool boDiffWrite(const std::vector<kit::Finding>& findings, const std::map<std::string, CheckedText>& texts,
                 Output& output) {
    bool isAny = false;
    for (std::size_t begin = 0; begin < findings.size();) {
        const auto file = ofOneFile(findings, begin);
        begin += file.size();
        const auto& path = file.front().place.path;
        const auto text = texts.find(path);
        if (text == texts.end())
            continue;
        const auto diff =
            sUnifiedDiff(sOneLine(path), text->second.text, fixedText(text->second.text, file).text);
        output.vWrite(diff);
        isAny = isAny || !diff.empty();
    }
    return isAny;
}

} // namespace kiv::kivifc
