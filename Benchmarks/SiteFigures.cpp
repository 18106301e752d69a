#include "Require.h"
#include "Sections.h"
#include "Timing.h"

#include "kiv/Kit/Documents/SchemaFile.h"
#include "kiv/Kit/Documents/SetDocument.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <system_error>

namespace kiv::bench {

namespace {

namespace fs = std::filesystem;

/// The input as files in a folder of its own, which is removed at the end, and sites beside them.
class SiteFolder {
public:
    explicit SiteFolder(const Input& input) {
        auto name = (fs::temp_directory_path() / "kiv-bench-XXXXXX").native();
        vRequire(mkdtemp(name.data()) != nullptr, "no temporary folder");
        folder_ = name;
        fs::create_directory(folder_ / "sets");
        vWrite(folder_ / "schema.exp", input.schemaText);
        for (std::size_t number = 0; number != input.setTexts.size(); ++number)
            vWrite(folder_ / "sets" / (std::to_string(number) + ".xml"), input.setTexts[number]);
    }
    ~SiteFolder() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    SiteFolder(const SiteFolder&) = delete;
    SiteFolder& operator=(const SiteFolder&) = delete;

    /// Has kivifc write the site anew; the processor time of that, in seconds, its start included.
    double secondsOfSite() const {
        fs::remove_all(folder_ / "site");
        const auto before = secondsOfChildren();
        // Sets with findings are no failure here, so the status is not looked at, but the pages are.
        std::system(
            ("cd " + folder_.native() + " && " KIV_KIVIFC " site schema.exp sets --out site >log 2>&1")
                .c_str());
        const auto seconds = secondsOfChildren() - before;
        vRequire(fs::exists(folder_ / "site" / "index.html"), "kivifc wrote no site");
        return seconds;
    }

    /// Of all files of the site that was written last.
    double bytes() const {
        double all = 0;
        for (const auto& entry : fs::recursive_directory_iterator(folder_ / "site"))
            all += entry.is_regular_file() ? static_cast<double>(entry.file_size()) : 0;
        return all;
    }

    double bytesOfIndex() const {
        return static_cast<double>(fs::file_size(folder_ / "site" / "assets" / "search-index.js"));
    }

private:
    static void vWrite(const fs::path& path, const std::string& text) {
        std::ofstream file(path, std::ios::binary);
        file << text;
        vRequire(file.good(), path.native() + " cannot be written");
    }

    static double secondsOfChildren() {
        rusage usage{};
        getrusage(RUSAGE_CHILDREN, &usage);
        const auto seconds = [](const timeval& time) {
            return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
        };
        return seconds(usage.ru_utime) + seconds(usage.ru_stime);
    }

    fs::path folder_;
};

void vSchemaAndSetsRead(const Input& input) {
    const auto schema = kit::schemaTextRead(input.schemaText, "schema.exp");
    vRequire(schema.schema != nullptr, "the schema cannot be read");
    kit::ReadOptions options;
    options.withPositions = false;
    for (const auto& text : input.setTexts)
        vUse(kit::setTextCheck(text, "set.xml", *schema.schema, options).pSet());
}

} // namespace

Figures siteFigures(const Input& input) {
    constexpr int Repetitions = 5;
    constexpr double Megabyte = 1e6;
    const SiteFolder folder(input);
    auto seconds = folder.secondsOfSite();
    for (int repetition = 1; repetition != Repetitions; ++repetition)
        seconds = std::min(seconds, folder.secondsOfSite());
    const auto reading = secondsOf({{"read", [&] { vSchemaAndSetsRead(input); }}}, Repetitions);
    return {{"site", "kivifc site, processor time", seconds, "", 1, Unit::Seconds, 1.0},
            {"site", "the same", seconds, "loading the schema and reading the sets", reading[0]},
            {"site", "size of the site", folder.bytes(), "", 1, Unit::Bytes, 25 * Megabyte},
            {"site", "of which the search index", folder.bytesOfIndex(), "", 1, Unit::Bytes, 2 * Megabyte}};
}

} // namespace kiv::bench
