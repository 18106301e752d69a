# cmake -DSOURCE=FOLDER -DHEADER=FILE -P WriteCommit.cmake
#
# Writes the commit that FOLDER is at as KIVIFC_COMMIT into HEADER; "unknown" without git or when FOLDER is not the top
# of a clone, as an unpacked archive. HEADER is only touched when it changes, so nothing is compiled without need.
cmake_minimum_required(VERSION 3.25)
set(commit unknown)
find_program(git git)
if(git)
    # The clone may belong to someone else, as in a container; reading its commit is safe all the same.
    set(command ${git} -c safe.directory=* -C ${SOURCE} rev-parse)
    execute_process(COMMAND ${command} --show-toplevel OUTPUT_VARIABLE top RESULT_VARIABLE failure ERROR_QUIET
                    OUTPUT_STRIP_TRAILING_WHITESPACE)
    file(REAL_PATH ${SOURCE} source)
    if(NOT failure AND top STREQUAL source)
        execute_process(COMMAND ${command} --short=7 --verify HEAD OUTPUT_VARIABLE head RESULT_VARIABLE failure
                        ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT failure)
            set(commit ${head})
        endif()
    endif()
endif()
file(CONFIGURE OUTPUT ${HEADER} CONTENT "#define KIVIFC_COMMIT \"@commit@\"\n" @ONLY)
