/// Files of an export: named after what is in them, replaced only when they are an export's own, whole or not there.
///
///     const auto failure = sExportFileWrite(folder / (sFileName(set.getName()) + ".xml"), text, false);
///
/// What is written ends with a comment that holds a checksum of all before it. So a file that somebody changed is told
/// from one that an export left there.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kiv::kivifc {

/// A name that names a file in every folder; different names stay different. Bytes that file names cannot hold, "%" and
/// a dot at the beginning become "%XX"; an empty name becomes "%".
std::string sFileName(std::string_view name);

/// Writes a document, with the folders that lead to it, under another name first. Gives the reason when that was not
/// possible or not allowed, and an empty text when all is written.
std::string sExportFileWrite(const std::filesystem::path& path, const std::string& text, bool isForced);

} // namespace kiv::kivifc
