/// @file
/// Folders that are held open, so that what a path leads to cannot change while files are written there.
///
///     std::string failure;
///     const auto folder = folderOpen("Sets", "office", failure); // Sets may be a link, office may not
///     if (failure.empty())
///         failure = sFileReplace(folder, "Pset_Wall.xml", text);
///
/// Ownership: a folder is closed with its last owner.
/// Errors:    the reason in words, and an empty text where there is none.
#pragma once

#include "kivifc/Program/Output.h"

#include <filesystem>
#include <functional>
#include <string>

namespace kiv::kivifc {

/// A file descriptor that is closed at the end.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();

    /// Less than 0 for none.
    int getNumber() const { return number_; }
    bool isOpen() const { return number_ >= 0; }

    /// Somebody else closes it.
    void vRelease();

    /// Closes it now. A full disk or a server may refuse only here what was written before; false then, with
    /// the reason in `errno`. It is closed in any case.
    bool boClose();

private:
    int number_ = -1;
};

/// The reason for what the system refused just now.
std::string sSystemReason();

/// Opens `top` and the folders of `inner` one below the other, and makes those that are missing. Links lead
/// to `top` as to any file; below it they are refused. An empty `top` is the folder one is in.
Descriptor folderOpen(const std::filesystem::path& top, const std::filesystem::path& inner,
                      std::string& failure);

/// Writes what a file is to hold.
using ContentWriter = std::function<void(Output&)>;

/// Writes a file under another name first, in the same folder, and then gives it its own: it is there whole
/// or, as whatever was there before, not at all, whatever ends the program. A file that is replaced hands its
/// mode on, and its owner and group where the system permits that; a link is replaced itself.
std::string sFileReplace(const Descriptor& folder, const std::string& name, const std::string& text);
std::string sFileReplace(const Descriptor& folder, const std::string& name,
                         const ContentWriter& vContentWrite);

/// The same by path, in a folder that is there; it is rid of leftovers first.
std::string sFileReplace(const std::filesystem::path& path, const std::string& text);
std::string sFileReplace(const std::filesystem::path& path, const ContentWriter& vContentWrite);

/// Removes the unfinished files that programs left there which were killed. Those of programs that still run
/// stay, and so does every file that is not surely one: it has the name of one, with its checksum, is a file
/// of the same user with no other name, and nobody holds the lock of who writes it.
void vLeftoversRemove(const Descriptor& folder);

} // namespace kiv::kivifc
