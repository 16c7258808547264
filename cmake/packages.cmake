# The packages that cpack makes: an archive of everything, and the Debian packages `shaderqx` with the
# programs that compile and run shaders, and `shaderqx-dev` for building programs with the libraries.
set(SLC_CONTACT_MAIL "maintainers@shaderqx.example" CACHE STRING
    "Mail address in packages; by default one that receives no mail")

set(CPACK_PACKAGE_NAME shaderqx)
set(CPACK_PACKAGE_CONTACT "${SLC_CONTACT_ADDRESS} <${SLC_CONTACT_MAIL}>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
# Debian packages need `file`, and dpkg-shlibdeps of dpkg-dev, to find the packages that they depend on.
set(CPACK_GENERATOR TGZ)
find_program(SLC_FILE file)
find_program(SLC_SHLIBDEPS dpkg-shlibdeps)
mark_as_advanced(SLC_FILE SLC_SHLIBDEPS)
if(SLC_FILE AND SLC_SHLIBDEPS)
    list(APPEND CPACK_GENERATOR DEB)
else()
    slc_leave_out("Debian packages" "file or dpkg-shlibdeps is missing")
endif()

# Debian requires compressed manual pages, a changelog and a copyright file, which the archive does not need.
set(debian "${CMAKE_CURRENT_SOURCE_DIR}/debian")
configure_file("${debian}/copyright.in" debian/copyright @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS "${debian}/documents.cmake")
set(CPACK_SLC_DEBIAN_CHANGELOG "${debian}/changelog")
set(CPACK_SLC_DEBIAN_COPYRIGHT "${CMAKE_CURRENT_BINARY_DIR}/debian/copyright")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL shaderqx dev)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_SHADERQX_PACKAGE_NAME shaderqx)
set(CPACK_DEBIAN_SHADERQX_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_SHADERQX_PACKAGE_SHLIBDEPS ON)
# `shaderqx --dso` needs a C++ compiler, and sqxmake needs ninja.
set(CPACK_DEBIAN_SHADERQX_PACKAGE_RECOMMENDS "g++ | c++-compiler, ninja-build")
# The first line of both descriptions is that of the project.
set(CPACK_DEBIAN_SHADERQX_DESCRIPTION
    "shaderqx checks, optimizes and compiles surfaces, lights, displacements,
volumes and imagers, and writes byte-code or, with a C++ compiler, shared
objects.

Beside the compiler there are programs that shade pictures of shaders, show
them in a browser while they are written, list compiled shaders, compile
whole folders, and serve editors of shaders.")
set(CPACK_DEBIAN_DEV_PACKAGE_NAME shaderqx-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "shaderqx (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEV_DESCRIPTION
    "This package has headers and static libraries for programs that run shaders,
in byte-code or in shared objects, and files by which CMake and pkg-config
find them.

The CMake package also has a function that compiles shaders as part of a
build.")
include(CPack)
