/// @file
/// The file or folder that is being written: gone when the program has to end before it is whole.
///
///     {
///         const HeldEndSignals held; // nothing may end the program between making the file and noting it
///         file = openat(folder, name, O_WRONLY | O_CREAT | O_EXCL, 0600);
///         vUnfinishedFileNote(folder, name);
///     }
///
/// Threads: one thread a process writes files, see `programRun`.
#pragma once

#include <csignal>

namespace kiv::kivifc {

/// From now on SIGINT, SIGTERM and SIGHUP remove what is unfinished and then end the program as if they had
/// not been caught. Those that are ignored, as SIGHUP is below nohup, stay so.
void vEndSignalsCatch();

/// Holds these signals back while it lives; what comes meanwhile takes effect at its end.
class HeldEndSignals {
public:
    HeldEndSignals();
    HeldEndSignals(const HeldEndSignals&) = delete;
    HeldEndSignals& operator=(const HeldEndSignals&) = delete;
    ~HeldEndSignals();

private:
    sigset_t former_{};
};

/// The folder stays open until the file is forgotten. There is one unfinished file at most; its name has up
/// to 63 bytes.
void vUnfinishedFileNote(int folder, const char* name);

/// It has got its own name, or is gone.
void vUnfinishedFileForget();

/// Removes and forgets it, if there is one. Calls nothing that a handler of a signal may not call.
void vUnfinishedFileRemove();

/// Removes a folder with all that was written into it. It may come between any two steps of who writes the
/// folder, unless the signals are held back, and calls nothing that a handler of a signal may not call.
using FolderRemoval = void (*)(const void* folder);

/// `folder` is handed to the removal, and must last until the folder is forgotten. There is one unfinished
/// folder at most.
void vUnfinishedFolderNote(FolderRemoval vRemove, const void* folder);
void vUnfinishedFolderForget();

/// Removes file and folder, whichever there is. Calls nothing that a handler of a signal may not call.
void vUnfinishedRemove();

} // namespace kiv::kivifc
