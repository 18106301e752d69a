#include "kivifc/Commands/CommandLine.h"

int main(int argc, char** argv) {
    return static_cast<int>(kiv::kivifc::commandLineRun(argc, argv));
}
