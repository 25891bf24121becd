# Run by CPack: the source tarball is a Debian source package too.
file(COPY "${CPACK_DEBIAN_DIRECTORY}" DESTINATION "${CPACK_TEMPORARY_INSTALL_DIRECTORY}")
