#include "kiv/Base/Exception.h"

namespace kiv {

exception::exception() = default;
exception::exception(const std::string& message) : message_(message) {}
exception::exception(const exception& other) = default;
exception& exception::operator=(const exception& other) = default;
exception::~exception() = default;

const char* exception::what() const noexcept {
    return message_.c_str();
}

} // namespace kiv
