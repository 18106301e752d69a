#include "kiv/Kit/Findings/Rule.h"

#include <algorithm>

namespace kiv::kit {

namespace {

char upperCase(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

} // namespace

std::span<const Rule> getRules() {
    return {};
}

const Rule* pRuleFind(std::string_view code) {
    const auto rules = getRules();
    const auto isAsked = [code](const Rule& rule) {
        return std::ranges::equal(rule.code, code, {}, upperCase, upperCase);
    };
    const auto found = std::ranges::find_if(rules, isAsked);
    return found == rules.end() ? nullptr : &*found;
}

} // namespace kiv::kit
