# Installed: the public headers in the folders of the source tree, the shared libraries, the CMake
# package KTSOvuGeom and a pkg-config file. A folder detail/ is never installed.
