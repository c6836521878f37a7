# How a foundation library and a module of the shared library are declared: one call each, naming
# the sources, the tests and what the folder may use.

include(GNUInstallDirs)
set(KTSOVU_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}/ktsovugeom")

# Adds the shared library TARGET of the foundation, built from foundation/FOLDER.
#   ktsovu_foundation(KTSBasAlloc SOURCES a.cpp ... USES KTSBasCoreUtils ... TESTS a_test.cpp ...)
function(ktsovu_foundation target)
    cmake_parse_arguments(PARSE_ARGV 1 F "" "" "SOURCES;USES;TESTS")
    add_library(${target} SHARED ${F_SOURCES})
    string(TOUPPER ${target} upper)
    target_compile_definitions(${target} PRIVATE ${upper}_BUILDING)
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${KTSOVU_INCLUDEDIR}>)
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_link_libraries(${target} PUBLIC ${F_USES} PRIVATE $<BUILD_INTERFACE:ktsovu_flags>)
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    if(WIN32)
        set_target_properties(${target} PROPERTIES PREFIX "")
    endif()
    set_property(GLOBAL APPEND PROPERTY KTSOVU_FOUNDATION ${target})
    get_filename_component(folder "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
    ktsovu_test(${folder}_test SOURCES ${F_TESTS} LINK ${target})
endfunction()

# Adds module NAME as objects that ktsovu_library() sums into the one shared library, and a test
# program that links the module and the closure of what it uses, so that an undeclared use fails.
#   ktsovu_module(gsl SOURCES ... USES g3d omu cow TESTS ...)
# A module whose tests need modules besides names them after TESTS_USES; one whose tests need the
# loaded library itself says TESTS_USE_LIBRARY.
function(ktsovu_module name)
    cmake_parse_arguments(PARSE_ARGV 1 M "TESTS_USE_LIBRARY" "" "SOURCES;USES;TESTS;TESTS_USES")
    add_library(ktsovu_${name} OBJECT ${M_SOURCES})
    target_compile_definitions(ktsovu_${name} PUBLIC KTSOVUGEOM_BUILDING)
    target_include_directories(ktsovu_${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(ktsovu_${name} PUBLIC KTSOvuBasicUtils PRIVATE ktsovu_flags)
    set(closure ${name})
    foreach(used IN LISTS M_USES)
        get_property(used_closure GLOBAL PROPERTY KTSOVU_CLOSURE_${used})
        list(APPEND closure ${used_closure})
    endforeach()
    list(REMOVE_DUPLICATES closure)
    set_property(GLOBAL PROPERTY KTSOVU_CLOSURE_${name} ${closure})
    set_property(GLOBAL APPEND PROPERTY KTSOVU_MODULES ${name})
    if(M_TESTS_USE_LIBRARY)
        ktsovu_test(${name}_test SOURCES ${M_TESTS} LINK KTSOvuGeom)
    else()
        foreach(used IN LISTS M_TESTS_USES)
            get_property(used_closure GLOBAL PROPERTY KTSOVU_CLOSURE_${used})
            list(APPEND closure ${used_closure})
        endforeach()
        list(REMOVE_DUPLICATES closure)
        list(TRANSFORM closure PREPEND ktsovu_)
        ktsovu_test(${name}_test SOURCES ${M_TESTS} LINK ${closure})
    endif()
endfunction()

# Adds the test program NAME (GoogleTest) and runs it as one CTest entry, or a long one as the number
# of entries that SHARDS tells, each with its share of the tests.
function(ktsovu_test name)
    cmake_parse_arguments(PARSE_ARGV 1 T "" "SHARDS" "SOURCES;LINK")
    if(NOT KTSOVU_BUILD_TESTS OR NOT T_SOURCES)
        return()
    endif()
    add_executable(${name} ${T_SOURCES})
    target_link_libraries(${name} PRIVATE ${T_LINK} ktsovu_testing GTest::gmock GTest::gtest_main
                          ktsovu_flags)
    # Parsing GoogleTest takes longer than compiling most tests: the first test program holds it
    # precompiled for all. Then g++ 12 takes copies of std::string for overruns.
    get_property(holder GLOBAL PROPERTY KTSOVU_TEST_HEADERS)
    if(holder)
        target_precompile_headers(${name} REUSE_FROM ${holder})
    else()
        target_precompile_headers(${name} PRIVATE <gmock/gmock.h>)
        set_property(GLOBAL PROPERTY KTSOVU_TEST_HEADERS ${name})
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${name} PRIVATE
                               -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow)
    endif()
    list(FILTER T_SOURCES INCLUDE REGEX "\\.c$")
    set_source_files_properties(${T_SOURCES} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    if(NOT T_SHARDS)
        add_test(NAME ${name} COMMAND ${name})
        return()
    endif()
    foreach(shard RANGE 1 ${T_SHARDS})
        math(EXPR index "${shard} - 1")
        add_test(NAME ${name}_${shard} COMMAND ${name})
        set_tests_properties(${name}_${shard} PROPERTIES ENVIRONMENT
                             "GTEST_TOTAL_SHARDS=${T_SHARDS};GTEST_SHARD_INDEX=${index}")
    endforeach()
endfunction()

# Sums all modules into KTSOvuGeom.
function(ktsovu_library)
    get_property(modules GLOBAL PROPERTY KTSOVU_MODULES)
    list(TRANSFORM modules REPLACE "(.+)" "$<TARGET_OBJECTS:ktsovu_\\1>" OUTPUT_VARIABLE objects)
    add_library(KTSOvuGeom SHARED ${objects})
    add_library(KTSOvuGeom::KTSOvuGeom ALIAS KTSOvuGeom)
    target_include_directories(KTSOvuGeom PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${KTSOVU_INCLUDEDIR}>)
    target_compile_features(KTSOvuGeom PUBLIC cxx_std_20)
    # Inline code of the headers rounds the same way in the consumer as in the library.
    target_compile_options(KTSOvuGeom INTERFACE -ffp-contract=off)
    target_link_libraries(KTSOvuGeom PUBLIC KTSOvuBasicUtils PRIVATE $<BUILD_INTERFACE:ktsovu_flags>)
    set_target_properties(KTSOvuGeom PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} LINKER_LANGUAGE CXX)
    if(WIN32)
        set_target_properties(KTSOvuGeom PROPERTIES PREFIX "")
    endif()
endfunction()
