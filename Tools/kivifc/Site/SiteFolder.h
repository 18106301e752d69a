/// @file
/// The folder of a site: written beside the former one and exchanged with it when it is complete.
///
///     SiteFolder folder("Site", isForced);
///     folder.vWrite(addresses.of(wall), text);
///     if (const auto failure = folder.sFinish(); !failure.empty())
///         ...
///
/// A site has a file `.kivifc-site` that lists the files of it. A folder without one, or with a file that is
/// not in its list, is not replaced unless that is asked for. When anything fails, or a signal asks the
/// program to end, the former folder remains, and what was written is removed. What a site leaves that was
/// killed outright the next one removes, or, when that is the former site, puts back; folders of such a name
/// that kivifc did not make stay.
///
/// Ownership: what was not finished is gone with it.
/// Threads:   one thread; other processes that write the same site are refused.
/// Errors:    the first failure is kept, nothing is written after it, and `sFinish` gives its reason.
#pragma once

#include "kivifc/Documents/Folder.h"
#include "kivifc/Site/Address.h"
#include "kivifc/Site/Assets.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

/// Lets two folders change places in one step; false where that is not possible.
using FoldersExchange = bool (*)(const std::filesystem::path& left, const std::filesystem::path& right);
bool boFoldersExchange(const std::filesystem::path& left, const std::filesystem::path& right);

class SiteFolder {
public:
    /// `isForced`: a folder that is not a site, or has other files too, is replaced, and these are gone.
    SiteFolder(const std::filesystem::path& folder, bool isForced,
               FoldersExchange boExchange = boFoldersExchange);
    SiteFolder(const SiteFolder&) = delete;
    SiteFolder& operator=(const SiteFolder&) = delete;
    ~SiteFolder();

    /// Empty as long as all is well; to be asked before a site is made, as it may be refused at once.
    const std::string& getFailure() const { return failure_; }

    void vWrite(const Address& address, std::string_view text);
    /// To the folder `assets`.
    void vWrite(const Asset& asset);

    /// Puts the site in its place. Gives the reason when that, or anything before it, failed.
    std::string sFinish();

    /// Of files written.
    std::size_t getCount() const { return written_.size(); }
    std::size_t getBytes() const { return bytes_; }

private:
    SiteFolder(bool isForced, FoldersExchange boExchange);
    void vPrepare(const std::filesystem::path& folder);
    std::string sLeftoversRemove();
    void vBegin();
    /// It is no longer ours to remove.
    void vEnd();
    void vNote(const std::string& path);
    static void vWrittenRemove(const void* folder);
    void vFileWrite(const Descriptor& folder, std::string_view folderName, std::string_view name,
                    std::string_view text);
    std::string sMove();
    std::string sReplace();
    static std::string sFormerRemove(const Descriptor& folder, const std::filesystem::path& path);

    // With no link in it.
    std::filesystem::path target_;
    // Beside it.
    std::filesystem::path unfinished_;
    // Where the former site is meanwhile, when the two cannot change places in one step.
    std::filesystem::path former_;
    bool isForced_;
    FoldersExchange boExchange_;
    Descriptor top_;
    Descriptor sets_;
    Descriptor assets_;
    std::vector<std::string> written_;
    std::size_t bytes_ = 0;
    bool isBegun_ = false;
    std::string failure_;
};

} // namespace kiv::kivifc::site
