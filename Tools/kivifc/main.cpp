#include "kivifc/Program.h"

int main(int argc, char** argv) {
    return static_cast<int>(kiv::kivifc::programRun(argc, argv));
}
