# What only a build for Windows with mingw-w64 needs.

# Windows looks for the DLLs of a program beside it. Exceptions cross the borders of our DLLs, so
# they and the program share one C++ runtime, whose DLLs lie beside ours.
foreach(runtime IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}
                    OUTPUT_VARIABLE runtime_file OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT EXISTS "${runtime_file}")
        message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has no ${runtime}")
    endif()
    # Nine tenths of the C++ library's file are debug information.
    set(beside_ours "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${runtime}")
    file(MAKE_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    execute_process(COMMAND ${CMAKE_STRIP} --strip-debug "${runtime_file}" -o "${beside_ours}"
                    COMMAND_ERROR_IS_FATAL ANY)
    install(FILES "${beside_ours}" DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT library)
endforeach()

# Debian has GoogleTest for the target as sources only.
if(KTSOVU_BUILD_TESTS)
    set(KTSOVU_GOOGLETEST "/usr/src/googletest" CACHE PATH "Sources of GoogleTest")
    set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
    set(INSTALL_GTEST OFF)
    add_subdirectory("${KTSOVU_GOOGLETEST}" googletest EXCLUDE_FROM_ALL)
endif()
