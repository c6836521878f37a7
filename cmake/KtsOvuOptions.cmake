# Options of the build and the one set of compiler flags that every target gets.

option(KTSOVU_BUILD_TESTS "Build the tests" ${PROJECT_IS_TOP_LEVEL})
option(KTSOVU_BUILD_HOST "Build the host program ktsovu" ${PROJECT_IS_TOP_LEVEL})
option(KTSOVU_BUILD_BENCH "Build the benchmarks" OFF)
option(KTSOVU_BUILD_FUZZ "Build the fuzz targets (clang)" OFF)
option(KTSOVU_WERROR "Treat warnings as errors" ${PROJECT_IS_TOP_LEVEL})
set(KTSOVU_SANITIZE "" CACHE STRING "Sanitizers of every target, for example address,undefined")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
# Release numbers (and the benchmarks' ratios) are stated for -O2.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
set(CMAKE_C_FLAGS_RELEASE "-O2 -DNDEBUG")

add_library(ktsovu_flags INTERFACE)
# A fused multiply-add rounds once where the formulas round twice, so results would depend on the
# processor; contraction stays off, and so does everything of the fast-math family.
target_compile_options(ktsovu_flags INTERFACE -ffp-contract=off)
# Unique symbols (static members and locals of templates) would pin a library in memory after
# dlclose, and its detach would never run. clang emits none.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
    target_compile_options(ktsovu_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fno-gnu-unique>)
endif()
if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(ktsovu_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
endif()
if(KTSOVU_WERROR)
    target_compile_options(ktsovu_flags INTERFACE -Werror)
endif()
if(KTSOVU_SANITIZE)
    target_compile_options(ktsovu_flags INTERFACE -fsanitize=${KTSOVU_SANITIZE}
                           -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(ktsovu_flags INTERFACE -fsanitize=${KTSOVU_SANITIZE})
    # The instrumentation makes g++ warn of std::function members (std::regex) that are initialised.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(ktsovu_flags INTERFACE -Wno-maybe-uninitialized)
    endif()
endif()
