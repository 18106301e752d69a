#include "kivifc/Findings/Fixes.h"

#include <iterator>
#include <map>
#include <vector>

namespace kiv::kivifc {

namespace {

/// Edits that do not touch each other, by offset.
using Edits = std::map<std::size_t, const kit::FindingEdit*>;

std::size_t endOf(const kit::FindingEdit& edit) {
    return edit.offset + edit.length;
}

/// Two that insert at one place touch each other as well: their order would be chance.
bool isApart(const kit::FindingEdit& left, const kit::FindingEdit& right) {
    return endOf(left) < right.offset || endOf(right) < left.offset ||
           (endOf(left) == right.offset && left.length != 0 && right.length != 0) ||
           (endOf(right) == left.offset && left.length != 0 && right.length != 0);
}

bool isFree(const Edits& edits, const kit::FindingEdit& edit, std::size_t size) {
    if (edit.offset > size || edit.length > size - edit.offset)
        return false;
    const auto next = edits.lower_bound(edit.offset);
    if (next != edits.end() && !isApart(*next->second, edit))
        return false;
    return next == edits.begin() || isApart(*std::prev(next)->second, edit);
}

bool isSame(const Edits& edits, const kit::FindingEdit& edit) {
    const auto found = edits.find(edit.offset);
    return found != edits.end() && found->second->length == edit.length && found->second->text == edit.text;
}

/// Whether all edits of the finding were taken; two findings may ask for the same one.
bool boTake(Edits& edits, const kit::Finding& finding, std::size_t size) {
    std::vector<Edits::iterator> taken;
    for (const auto& edit : finding.edits) {
        if (isSame(edits, edit))
            continue;
        if (!isFree(edits, edit, size)) {
            for (const auto place : taken)
                edits.erase(place);
            return false;
        }
        taken.push_back(edits.emplace(edit.offset, &edit).first);
    }
    return !finding.edits.empty();
}

} // namespace

FixedText fixedText(std::string_view text, std::span<const kit::Finding> findings) {
    Edits edits;
    FixedText fixed;
    for (const auto& finding : findings)
        fixed.isMended.push_back(boTake(edits, finding, text.size()));
    std::size_t done = 0;
    for (const auto& [offset, edit] : edits) {
        fixed.text.append(text.substr(done, offset - done)).append(edit->text);
        done = endOf(*edit);
    }
    fixed.text += text.substr(done);
    return fixed;
}

} // namespace kiv::kivifc
