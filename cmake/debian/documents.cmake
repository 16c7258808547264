# Run by cpack before it packs. If it makes Debian packages, adds the files that Debian's policy requires to
# the tree of each package, compresses the manual pages, and sets the modes of all files.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()
find_program(GZIP gzip REQUIRED)
foreach(part IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${part}" PART)
    set(name "${CPACK_DEBIAN_${PART}_PACKAGE_NAME}")
    set(tree "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${part}${CPACK_PACKAGING_INSTALL_PREFIX}")
    set(documents "${tree}/share/doc/${name}")
    file(MAKE_DIRECTORY "${documents}")
    configure_file("${CPACK_SLC_DEBIAN_CHANGELOG}" "${documents}/changelog" COPYONLY)
    configure_file("${CPACK_SLC_DEBIAN_COPYRIGHT}" "${documents}/copyright" COPYONLY)
    file(GLOB pages "${tree}/share/man/man1/*.1" "${documents}/changelog")
    execute_process(COMMAND "${GZIP}" -9nf ${pages} COMMAND_ERROR_IS_FATAL ANY)
    # Debian's policy also fixes the modes, but those in the tree depend on the umask of the user.
    execute_process(COMMAND chmod -R u=rwX,go=rX "${tree}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
