/// @file
/// What a file is that was taken for something else, by how it begins.
///
///     fileKindOf("%PDF-1.7") // "a PDF document"
///
/// Private to the kit.
///
/// Ownership: the names live as long as the process.
/// Threads:   any number of threads.
/// Errors:    none; the kind of most texts is not known.
#pragma once

#include "Kit/Text/AsciiText.h"
#include "Kit/Text/Utf8.h"

#include <string_view>

namespace kiv::kit {

inline constexpr std::string_view XmlKind = "an XML document";
inline constexpr std::string_view ModelKind = "an IFC model";
inline constexpr std::string_view ArchiveKind = "a ZIP archive";
inline constexpr std::string_view SchemaKind = "an EXPRESS schema";

/// Empty when it is not known.
constexpr std::string_view fileKindOf(std::string_view text) {
    struct Kind {
        std::string_view beginning;
        std::string_view name;
    };
    constexpr Kind Kinds[] = {
        {"%PDF-", "a PDF document"}, {"PK\x03\x04", ArchiveKind},
        {"ISO-10303-21", ModelKind}, {"<!DOCTYPE html", "an HTML page"},
        {"<html", "an HTML page"},   {"<", XmlKind},
        {"SCHEMA", SchemaKind},      {"{", "a JSON document"},
    };
    text = withoutByteOrderMark(text);
    text = trimmed(text);
    for (const auto& kind : Kinds) {
        if (startsWithIgnoringCase(text, kind.beginning))
            return kind.name;
    }
    return {};
}

} // namespace kiv::kit
