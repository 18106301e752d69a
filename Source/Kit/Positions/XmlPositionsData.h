/// @file
/// What `XmlPositions` keeps of a document.
///
/// Private to the kit.
///
/// Ownership: owns the bytes; all views are of them or of `values`.
/// Threads:   filled by one thread; any number of threads may read it then.
/// Errors:    what the meter throws; std::bad_alloc.
#pragma once

#include "Kit/Text/MeteredRoom.h"
#include "kiv/Kit/Positions/XmlDecoding.h"
#include "kiv/Kit/Positions/XmlPositions.h"
#include "kiv/Kit/Text/TextLines.h"

#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

struct XmlPositions::Data {
    /// The meter may be null.
    KIV_NO_EXPORT Data(std::string&& file, WorkMeter* meter);

    /// A range of the text as one of the file.
    ByteRange range(std::size_t from, std::size_t size) const {
        return encoding == XmlEncoding::Utf8 ? ByteRange{from + offset, size} : ByteRange{};
    }

    /// Of a view of the text.
    std::size_t offsetOf(std::string_view part) const {
        return static_cast<std::size_t>(part.data() - text.data());
    }

    TextPosition at(std::size_t from, std::size_t size = 0) const {
        std::call_once(linesOnce, [this] { lines = TextLines(text); });
        return lines.at(from, size);
    }

    /// A view of the value that lives as long as the text: of the text itself where that is written as it
    /// reads.
    std::string_view kept(std::string_view value, std::string_view written, WorkMeter* meter) {
        const bool isSame = value.data() == written.data() && value.size() == written.size();
        if (isSame || value == written)
            return written;
        vMemoryTake(meter,
                    sizeof(std::string) + (value.size() <= std::string().capacity() ? 0 : value.size() + 1));
        return values.emplace_back(value);
    }

    std::string bytes;
    XmlEncoding encoding;
    std::string decoded;
    std::string_view text;
    /// Of the text in the file.
    std::size_t offset = 0;
    std::vector<XmlElement> elements;
    std::vector<XmlAttribute> attributes;
    std::vector<XmlIgnore> ignores;
    /// Values that are written in another way than they read. They stay where they are.
    std::deque<std::string> values;
    std::optional<XmlPositionError> error;

private:
    // Made for the first question about a line, by whichever thread asks it.
    mutable std::once_flag linesOnce;
    mutable TextLines lines;

    KIV_NO_EXPORT void vDecode(WorkMeter* meter);
};

} // namespace kiv::kit
