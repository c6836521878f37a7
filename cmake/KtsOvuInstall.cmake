# Installed: the public headers in the folders of the source tree, the shared libraries, the CMake
# package KTSOvuGeom and a pkg-config file. The host installs its program and the Python module
# itself. `cpack` in the build tree packs all of it: Debian packages, or a zip for Windows.

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME library)
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

set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_CONTACT "The developers of KTSOvuGeom")
set(CPACK_STRIP_FILES ON)
if(WIN32)
    set(CPACK_GENERATOR ZIP)
else()
    set(CPACK_GENERATOR DEB)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_COMPONENTS_ALL library)
    if(TARGET ktsovu)
        list(APPEND CPACK_COMPONENTS_ALL program python)
    endif()
    set(CPACK_DEB_COMPONENT_INSTALL ON)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ktsovugeom)
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libdevel)
    set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "Checks the clearances of assemblies of real models")
    set(CPACK_COMPONENT_PROGRAM_DEPENDS library)
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME ktsovu)
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION science)
    set(CPACK_COMPONENT_PYTHON_DESCRIPTION "Python module ktsovu")
    set(CPACK_COMPONENT_PYTHON_DEPENDS library)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-ktsovu)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
    set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
    # What the programs link names the packages that they need; ours are not installed here.
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
    set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
endif()
include(CPack)
