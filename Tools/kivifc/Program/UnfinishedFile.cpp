#include "kivifc/Program/UnfinishedFile.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <unistd.h>

namespace kiv::kivifc {

namespace {

constexpr std::array<int, 3> EndSignals{SIGINT, SIGTERM, SIGHUP};

// Written only while the signals are held back, so that their handler never finds half of it.
int unfinishedFolder = -1;
std::array<char, 64> unfinishedName{};
FolderRemoval folderRemoval = nullptr;
const void* removedFolder = nullptr;

std::array<struct sigaction, EndSignals.size()> formerActions{};

sigset_t endSignals() {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : EndSignals)
        sigaddset(&set, number);
    return set;
}

/// The signal that is raised here comes when the handler has returned, and then ends the program.
extern "C" void onEndSignal(int number) {
    const int error = errno;
    vUnfinishedRemove();
    for (std::size_t place = 0; place < EndSignals.size(); ++place) {
        if (EndSignals[place] == number)
            sigaction(number, &formerActions[place], nullptr);
    }
    raise(number);
    errno = error;
}

} // namespace

void vEndSignalsCatch() {
    struct sigaction action {};
    action.sa_handler = onEndSignal;
    action.sa_mask = endSignals();
    for (std::size_t place = 0; place < EndSignals.size(); ++place) {
        auto& former = formerActions[place];
        sigaction(EndSignals[place], nullptr, &former);
        if (former.sa_handler != SIG_IGN)
            sigaction(EndSignals[place], &action, nullptr);
    }
}

HeldEndSignals::HeldEndSignals() {
    const auto set = endSignals();
    pthread_sigmask(SIG_BLOCK, &set, &former_);
}

HeldEndSignals::~HeldEndSignals() {
    const int error = errno;
    pthread_sigmask(SIG_SETMASK, &former_, nullptr);
    errno = error;
}

void vUnfinishedFileNote(int folder, const char* name) {
    const HeldEndSignals held;
    std::size_t length = 0;
    for (; length + 1 < unfinishedName.size() && name[length] != '\0'; ++length)
        unfinishedName[length] = name[length];
    unfinishedName[length] = '\0';
    unfinishedFolder = folder;
}

void vUnfinishedFileForget() {
    const HeldEndSignals held;
    unfinishedFolder = -1;
}

void vUnfinishedFileRemove() {
    const HeldEndSignals held;
    if (unfinishedFolder >= 0)
        unlinkat(unfinishedFolder, unfinishedName.data(), 0);
    unfinishedFolder = -1;
}

void vUnfinishedFolderNote(FolderRemoval vRemove, const void* folder) {
    const HeldEndSignals held;
    folderRemoval = vRemove;
    removedFolder = folder;
}

void vUnfinishedFolderForget() {
    const HeldEndSignals held;
    folderRemoval = nullptr;
}

void vUnfinishedRemove() {
    const HeldEndSignals held;
    vUnfinishedFileRemove();
    if (folderRemoval)
        folderRemoval(removedFolder);
    folderRemoval = nullptr;
}

} // namespace kiv::kivifc
