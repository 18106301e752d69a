#include "kivifc/Commands/Options.h"

#include <CLI/CLI.hpp>

namespace kiv::kivifc {

const DeclaredOption& DeclaredOption::required() const {
    option_->required();
    return *this;
}

const DeclaredOption& DeclaredOption::valueName(const char* name) const {
    option_->type_name(name);
    return *this;
}

const DeclaredOption& DeclaredOption::excludes(const DeclaredOption& other) const {
    option_->excludes(other.option_);
    return *this;
}

const DeclaredOption&
DeclaredOption::check(const std::function<std::string(const std::string&)>& sFailure) const {
    option_->check(sFailure);
    return *this;
}

DeclaredOption Options::text(const char* name, std::string& value, const char* description) const {
    return DeclaredOption(app_.add_option(name, value, description));
}

DeclaredOption Options::texts(const char* name, std::vector<std::string>& values,
                              const char* description) const {
    return DeclaredOption(app_.add_option(name, values, description));
}

DeclaredOption Options::flag(const char* name, bool& isGiven, const char* description) const {
    return DeclaredOption(app_.add_flag(name, isGiven, description));
}

DeclaredOption Options::textOrFlag(const char* name, const std::function<void(const std::string&)>& vTake,
                                   const char* description) const {
    return DeclaredOption(app_.add_option_function<std::string>(name, vTake, description)->expected(0, 1));
}

void Options::vFooter(const char* text) const {
    app_.footer(text);
}

} // namespace kiv::kivifc
