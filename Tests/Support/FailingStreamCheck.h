/// @file
/// The check that a reader passes on the failure of its stream, wherever that happens.
///
///     vFailingStreamCheck(text, 10, [](std::istream& stream) { schemaFromStream(stream); });
///
/// Errors: each position without an exception, or with another one, is a failure of the test.
#pragma once

#include "Support/FailingStream.h"
#include "kiv/Base/Exception.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string_view>

namespace kiv::test {

/// Calls `read` with streams that fail after `first` bytes of the text, after one more, and so on up to all
/// but the last byte. Each time it must throw `kiv::exception` with an empty message.
template <class Read>
void vFailingStreamCheck(std::string_view text, std::size_t first, Read read) {
    for (auto bytes = first; bytes < text.size(); ++bytes) {
        FailingStream stream(text, bytes);
        try {
            read(stream);
            ADD_FAILURE() << "no exception after " << bytes;
        } catch (const exception& error) {
            EXPECT_STREQ(error.what(), "") << bytes;
        }
    }
}

} // namespace kiv::test
