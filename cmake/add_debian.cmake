# Run by CPack: the source tarball is a Debian source package too. Its directories are made with the
# umask of whoever configures, which must not show.
file(COPY "${CPACK_DEBIAN_DIRECTORY}" DESTINATION "${CPACK_TEMPORARY_INSTALL_DIRECTORY}"
     DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
                           GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
