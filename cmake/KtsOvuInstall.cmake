# Installed: the public headers in the folders of the source tree, the shared libraries, the CMake
# package KTSOvuGeom and a pkg-config file. The host installs its program itself.

include(CMakePackageConfigHelpers)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/KTSOvuGeom")
get_property(foundation GLOBAL PROPERTY KTSOVU_FOUNDATION)
get_property(modules GLOBAL PROPERTY KTSOVU_MODULES)

# What stands in detail/ or belongs to a test is for the source tree alone.
list(TRANSFORM modules APPEND "/*.h" OUTPUT_VARIABLE patterns)
list(APPEND patterns "foundation/*.h")
list(TRANSFORM patterns PREPEND "${PROJECT_SOURCE_DIR}/")
file(GLOB_RECURSE headers RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS ${patterns})
list(FILTER headers EXCLUDE REGEX "/detail/|_test[^/]*$")
foreach(header IN LISTS headers)
    get_filename_component(folder "${header}" DIRECTORY)
    install(FILES "${PROJECT_SOURCE_DIR}/${header}" DESTINATION "${KTSOVU_INCLUDEDIR}/${folder}")
endforeach()

# The tree can be moved as a whole: every file finds its neighbours by its own place.
set_target_properties(KTSOvuGeom ${foundation} PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS KTSOvuGeom ${foundation} EXPORT KTSOvuGeomTargets)
if(TARGET ktsovu)
    file(RELATIVE_PATH libraries "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
    set_target_properties(ktsovu PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
endif()

install(EXPORT KTSOvuGeomTargets NAMESPACE KTSOvuGeom:: DESTINATION "${package_dir}")
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/KTSOvuGeomConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/KTSOvuGeomConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/KTSOvuGeomConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/KTSOvuGeomConfig.cmake"
              "${PROJECT_BINARY_DIR}/KTSOvuGeomConfigVersion.cmake" DESTINATION "${package_dir}")

set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH pkgconfig_prefix "/${pkgconfig_dir}" "/")
list(TRANSFORM foundation PREPEND "-l" OUTPUT_VARIABLE pkgconfig_libs)
list(REVERSE pkgconfig_libs)
list(JOIN pkgconfig_libs " " pkgconfig_libs)
configure_file("${CMAKE_CURRENT_LIST_DIR}/KTSOvuGeom.pc.in" "${PROJECT_BINARY_DIR}/KTSOvuGeom.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/KTSOvuGeom.pc" DESTINATION "${pkgconfig_dir}")
