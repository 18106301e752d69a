// kiv_bench_load SCHEMA: a host that loads a schema and ends, to be timed as a whole process.

#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <cstdio>
#include <fstream>

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    std::ifstream stream(argv[1], std::ios::binary);
    const auto schema = kiv::ifc::def::SchemaPset::pStepStreamRead(stream);
    if (!schema || schema->getObjects().empty())
        return 1;
    std::printf("%zu objects\n", schema->getObjects().size());
    return 0;
}
