/// Collects the assertion reports that are made while it lives.
///
///     kiv::test::AssertCollector reports;
///     const auto schema = schemaFromText("ENTITY A;\n  SUBTYPE OF (Missing);\nEND_ENTITY;");
///     EXPECT_EQ(reports.getMessages(), std::vector<std::string>{"Entity not found"});
///
/// Threads: as `kiv::assert::CollectingSink`.
#pragma once

#include "kiv/Host/Assert/KivAssert.h"

#include <ostream>
#include <string>
#include <vector>

namespace kiv::assert {

/// For GoogleTest, which finds it by its name.
inline void PrintTo(const AssertRecord& record, std::ostream* stream) {
    *stream << '"' << record.message << "\" from " << record.function << " in " << record.file << ':'
            << record.line << ", code " << record.code;
}

} // namespace kiv::assert

namespace kiv::test {

class AssertCollector {
public:
    AssertCollector() : installed_(sink_) {}

    /// All reports up to now, in the order in which they came.
    std::vector<kiv::assert::AssertRecord> getRecords() const { return sink_.getRecords(); }

    /// Their messages alone.
    std::vector<std::string> getMessages() const {
        std::vector<std::string> messages;
        for (auto& record : sink_.getRecords())
            messages.push_back(std::move(record.message));
        return messages;
    }

    /// Forgets the reports up to now.
    void vClear() { sink_.vClear(); }

private:
    kiv::assert::CollectingSink sink_;
    kiv::assert::ScopedSink installed_;
};

} // namespace kiv::test
