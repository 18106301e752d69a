// The rest of the host with the least that the library needs: its parser and its reports.

#include "SecondHost/Least/LeastHost.h"

#include "SecondHost/XmlTree.h"
#include "kiv/Host/Assert/KivAssert.h"

namespace kiv::xml {

File::File(errorhandler::ExceptionInterface*, VerboseLevel, ValidateLevel) {}
File::~File() = default;

std::optional<Element> File::parse(std::istream& stream, const std::string&, errorhandler::ParseInterface*) {
    TreeFailure failure;
    auto document = pTreeRead(stream, failure);
    if (!document)
        return std::nullopt;
    documents_.push_back(std::move(document));
    return Element(documents_.back()->root.children.front().get());
}

} // namespace kiv::xml

namespace kiv::test {

std::vector<std::string>& leastReports() {
    static std::vector<std::string> reports;
    return reports;
}

} // namespace kiv::test

namespace kiv::assert {

bool Assert::isEnabled() {
    return true;
}

void Assert::addAssert(const AssertInfo& info) {
    kiv::test::leastReports().emplace_back(info.message);
}

} // namespace kiv::assert
