# The target `package` makes a Debian package for the prefix that the build is configured for,
# `package_source` a source tarball.

set(CPACK_PACKAGE_NAME teluma-wizard)
set(CPACK_PACKAGE_CONTACT "Teluma maintainers <maintainers@teluma.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "first-run configuration wizard of the Teluma mail server")
set(CPACK_PACKAGE_DESCRIPTION
    "Asks the administrator of a freshly installed Teluma mail server for its
password, domain, listeners and services in a full-screen text terminal,
and applies the answers to the server.")

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME teluma-wizard-${PROJECT_VERSION})
# Regular expressions for what lies in the tree but is no source.
foreach(path ${PROJECT_SOURCE_DIR}/build ${PROJECT_SOURCE_DIR}/.git ${PROJECT_BINARY_DIR})
  string(REGEX REPLACE "([][+.*()^$?|\\\\])" "\\\\\\1" path ${path})
  list(APPEND CPACK_SOURCE_IGNORE_FILES "^${path}(/|$)")
endforeach()
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
# Some files of a Debian package belong below /usr, whatever the prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_COMPONENTS_ALL program debian)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION mail)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

find_program(GZIP_PROGRAM gzip)
if(GZIP_PROGRAM)
  include(cmake/debian_files.cmake)
endif()
include(CPack)
