# shellcheck shell=bash
# ./dev coverage

# The tests of these folders count: those of the library and the kit, not of kivifc, the examples and hostile input.
covering=(Base Host Format/Ifc/Def Kit RealData Messages)

dev_coverage() {
    local build=build/coverage targets=("${covering[@]/#/Tests/}") folder
    need gcovr
    configure coverage
    compile coverage "${targets[@]/%//all}"
    find $build -name '*.gcda' -delete
    for folder in "${covering[@]}"; do
        ctest --test-dir "$build/Tests/$folder" -j "$(nproc)" --output-on-failure --quiet
    done
    # That a call may throw makes branches that no source shows.
    gcovr --root . --object-directory $build --filter "$(realpath Source)/" -j "$(nproc)" --exclude-throw-branches \
        --csv $build/coverage.csv --html-details $build/coverage.html
    coverage_table <$build/coverage.csv
    echo "line by line: $build/coverage.html"
}

# Adds the files of gcovr's table up by folder: FILE,LINES,COVERED,%,BRANCHES,COVERED,%,...
coverage_table() {
    awk -F, '
        function add(at) { lines[at] += $2; hit[at] += $3; branches[at] += $5; taken[at] += $6 }
        function part(of, all) { return all ? 100 * of / all : 100 }
        NR > 1 { folder = $1; sub("/[^/]*$", "", folder); add(folder); add("total") }
        END {
            for (at in lines)
                printf "%-34s %5d of %5d lines %6.2f %%  %5d of %5d branches %6.2f %%\n", at, hit[at], lines[at],
                    part(hit[at], lines[at]), taken[at], branches[at], part(taken[at], branches[at])
        }' | LC_ALL=C sort # which puts the total last
}
