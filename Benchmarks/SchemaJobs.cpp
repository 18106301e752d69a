#include "Allocations.h"
#include "Reading.h"
#include "Sections.h"
#include "Timing.h"

namespace kiv::bench {

namespace {

void vLinesRead(std::istream& stream) {
    vRewind(stream);
    std::string line;
    std::size_t bytes = 0;
    while (std::getline(stream, line))
        bytes += line.size();
    vUse(bytes);
}

} // namespace

Figures schemaJobs(const Input& input) {
    std::istringstream stream(input.schemaText);
    std::unique_ptr<ifc::def::schema::Schema> schema;
    const auto load = [&] { schema = pSchemaRead(stream); };
    const auto destroy = [&] { schema.reset(); };
    const auto seconds = secondsOf({{"lines", [&] { vLinesRead(stream); }},
                                    {"load", load, {}, destroy},
                                    {"load at first", load, vFreedMemoryHandBack, destroy},
                                    {"destroy", destroy, load}},
                                   15);
    const std::string lines = "std::getline over the same stream";
    return {{"jobs", "load the schema", seconds[1], lines, seconds[0], Unit::Seconds, 4},
            {"jobs", "load it into memory that the system has to give first", seconds[2], lines, seconds[0],
             Unit::Seconds, 5},
            {"jobs", "destroy the schema", seconds[3], lines, seconds[0], Unit::Seconds, 1}};
}

} // namespace kiv::bench
