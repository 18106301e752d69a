/// @file
/// Files of an export: named after what is in them, replaced only when they are an export's own, whole or not
/// there.
///
///     ExportFiles files(folder, isForced);
///     const auto failure = files.sWrite(folder / (sFileName(set.getName()) + ".xml"), text);
///
/// A written file ends with a comment that holds a checksum of all before it, which distinguishes a file that
/// somebody changed from one that an export left there.
///
/// Ownership: keeps the folder of the last file open until the next one, or its own end.
/// Threads:   one thread at a time; other processes may write to the same folder.
/// Errors:    reasons as texts; std::bad_alloc passes.
#pragma once

#include "kivifc/Documents/Folder.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

/// A name that names a file in every folder; different names stay different. Bytes that file names cannot
/// hold, "%" and a dot at the beginning become "%XX"; an empty name becomes "%". Of a name that is too long
/// for a file the beginning is kept, followed by "%~" and a checksum of the whole name.
std::string sFileName(std::string_view name);

/// The files of one export.
class ExportFiles {
public:
    /// `isForced`: files that no export wrote are replaced as well.
    explicit ExportFiles(bool isForced) : isForced_(isForced) {}

    /// All files are to be below `top`, where links are refused: those to folders, and those in the place of
    /// a file.
    ExportFiles(std::filesystem::path top, bool isForced) : isForced_(isForced), top_(std::move(top)) {}

    /// Writes a document, with the folders that lead to it, under another name first. Gives the reason when
    /// that was not possible or not allowed, and an empty text when all is written.
    std::string sWrite(const std::filesystem::path& path, const std::string& text);

private:
    std::string sFolderOpen(const std::filesystem::path& path);
    std::string sKeepReason(const std::filesystem::path& path) const;
    bool isWritten(const std::filesystem::path& path) const;

    bool isForced_;
    std::optional<std::filesystem::path> top_;
    // The folder of the last file: files come folder by folder.
    Descriptor folder_;
    std::filesystem::path folderPath_;
    // What was written, by a key that paths to one file share.
    std::multimap<std::string, std::filesystem::path> written_;
};

} // namespace kiv::kivifc
