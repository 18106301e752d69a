/// @file
/// How a folder shows that kivifc made it: a file `.kivifc-site` that lists the files of a site, or, as long
/// as the site is being written or removed, a file `.kivifc-site-unfinished`.
///
///     if (const auto reason = sKeepReason(folder); !reason.empty())
///         return reason; // somebody else has files there
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    the reason in words, empty for none.
#pragma once

#include "kivifc/Documents/Folder.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kiv::kivifc::site {

inline constexpr const char* MarkName = ".kivifc-site";
inline constexpr const char* UnfinishedMarkName = ".kivifc-site-unfinished";

/// What the mark of a site with these files says.
std::string sMark(const std::vector<std::string>& files);

/// Why a folder that is there must not be replaced; empty when it may be.
std::string sKeepReason(const std::filesystem::path& folder);

/// Marks a folder as one that may be removed, whatever it has.
std::string sUnfinishedMark(const Descriptor& folder);
/// The site is complete.
void vUnfinishedUnmark(const Descriptor& folder);

/// Whether a folder may be removed without a question: it is unfinished, a site without other files, or
/// empty.
bool isRemovable(const std::filesystem::path& folder);

/// Removes a folder and its mark last, so that what is left of it can be recognised at any moment.
std::string sMarkedRemove(const std::filesystem::path& folder);

/// Locks a folder that is there, for as long as it is held open. Nothing, when another program has the lock
/// or has put another folder there meanwhile.
Descriptor folderLock(const std::filesystem::path& folder);

} // namespace kiv::kivifc::site
