# Under the sanitizers and for Windows, the library and the host are compiled with the standard
# headers precompiled. That takes off a third of the time, and would hide an include that a source
# lacks: the other presets show those.
if(NOT KTSOVU_SANITIZE AND NOT WIN32)
    return()
endif()

file(CONFIGURE OUTPUT ktsovu_std.cpp CONTENT "")
add_library(ktsovu_std OBJECT "${CMAKE_CURRENT_BINARY_DIR}/ktsovu_std.cpp")
target_link_libraries(ktsovu_std PRIVATE ktsovu_flags)
target_precompile_headers(ktsovu_std PRIVATE <algorithm> <atomic> <cmath> <functional> <limits> <map>
    <memory> <span> <string> <unordered_map> <vector>)

get_property(foundation GLOBAL PROPERTY KTSOVU_FOUNDATION)
get_property(modules GLOBAL PROPERTY KTSOVU_MODULES)
list(TRANSFORM modules PREPEND ktsovu_)
foreach(target IN ITEMS ${foundation} ${modules} ktsovu_host ktsovu_python)
    if(TARGET ${target})
        target_precompile_headers(${target} REUSE_FROM ktsovu_std)
    endif()
endforeach()
