#include "kiv/Kit/Documents/Assertion.h"

#include "kiv/Base/WorkMeter.h"

#include <utility>

namespace kiv::kit {

namespace {

/// Of a long text, at each end.
constexpr std::size_t ComparedEnd = 64;

bool isAlike(std::string_view left, std::string_view right) {
    return left.size() == right.size() && left.substr(0, ComparedEnd) == right.substr(0, ComparedEnd) &&
           left.substr(left.size() - ComparedEnd) == right.substr(right.size() - ComparedEnd);
}

} // namespace

AssertionTexts::AssertionTexts() = default;
AssertionTexts::~AssertionTexts() = default;

AssertionTexts::AssertionTexts(AssertionTexts&& other) noexcept :
    texts_(std::move(other.texts_)),
    longTexts_(std::move(other.longTexts_)),
    heldBytes_(std::exchange(other.heldBytes_, 0)) {}

AssertionTexts& AssertionTexts::operator=(AssertionTexts&& other) noexcept {
    texts_ = std::move(other.texts_);
    longTexts_ = std::move(other.longTexts_);
    heldBytes_ = std::exchange(other.heldBytes_, 0);
    return *this;
}

Assertion AssertionTexts::kept(const assert::AssertInfo& info, WorkMeter& meter) {
    return {info.code, kept(info.message, meter), kept(info.function, meter), kept(info.file, meter),
            info.line};
}

void AssertionTexts::vClear(WorkMeter& meter) noexcept {
    texts_.clear();
    longTexts_.clear();
    meter.vMemoryGiveBack(heldBytes_);
    heldBytes_ = 0;
}

std::string_view AssertionTexts::kept(std::string_view text, WorkMeter& meter) {
    if (text.size() > maxCompared)
        return longKept(text, meter);
    const auto found = texts_.find(text);
    if (found != texts_.end())
        return *found;
    vTake(text, meter);
    return *texts_.emplace(text).first;
}

std::string_view AssertionTexts::longKept(std::string_view text, WorkMeter& meter) {
    const auto [first, last] = longTexts_.equal_range(text.data());
    for (auto place = first; place != last; ++place) {
        if (isAlike(place->second, text))
            return place->second;
    }
    vTake(text, meter);
    return longTexts_.emplace(text.data(), text)->second;
}

void AssertionTexts::vTake(std::string_view text, WorkMeter& meter) {
    // With what a table needs for each entry.
    const auto bytes = text.size() + 1 + sizeof(std::string) + 4 * sizeof(void*);
    meter.vTake(WorkMeter::Unit::HeldBytes, bytes);
    heldBytes_ += bytes;
}

} // namespace kiv::kit
