# The target `package` makes a Debian package and, where rpmbuild is, an .rpm for the prefix that the
# build is configured for; `package_source` a source tarball, which dpkg-buildpackage takes too.
# Version, date, maintainer and description of all of them stand here and in project().

set(TELUMA_MAINTAINER "The teluma-wizard authors <teluma-wizard@example.org>" CACHE STRING
    "Who is named as the maintainer of the packages")

# Packages carry the time of the release, seconds since 1970 in UTC, not that of their making.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  set(ENV{SOURCE_DATE_EPOCH} 1795262400)
endif()
set(release_time $ENV{SOURCE_DATE_EPOCH})
string(TIMESTAMP release_date "%a, %d %b %Y %H:%M:%S +0000" UTC)

set(CPACK_PACKAGE_NAME teluma-wizard)
set(CPACK_PACKAGE_CONTACT "${TELUMA_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "first-run configuration wizard of the Teluma mail server")
set(CPACK_PACKAGE_DESCRIPTION
    "Asks the administrator of a freshly installed Teluma mail server for its
password, domain, listeners and services in a full-screen text terminal,
and applies the answers to the server.")

# What makes a Debian source package out of the sources.
set(CPACK_DEBIAN_DIRECTORY ${PROJECT_BINARY_DIR}/packaging/source/debian)
string(REPLACE "\n" "\n " description_paragraph " ${CPACK_PACKAGE_DESCRIPTION}")
file(READ LICENSE licence)
string(REGEX REPLACE "^.*authors\n\n|\n$" "" licence "${licence}")
string(REPLACE "\n\n" "\n.\n" licence "${licence}")
string(REPLACE "\n" "\n " licence_paragraphs " ${licence}")
file(GLOB_RECURSE files RELATIVE ${PROJECT_SOURCE_DIR}/packaging/debian packaging/debian/*)
foreach(file IN LISTS files)
  if(file MATCHES "(.*)[.]in$")
    configure_file(packaging/debian/${file} ${CPACK_DEBIAN_DIRECTORY}/${CMAKE_MATCH_1} @ONLY)
  else()
    configure_file(packaging/debian/${file} ${CPACK_DEBIAN_DIRECTORY}/${file} COPYONLY)
  endif()
endforeach()

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME teluma-wizard-${PROJECT_VERSION})
# Regular expressions for what lies in the tree but is no source.
foreach(path ${PROJECT_SOURCE_DIR}/build ${PROJECT_SOURCE_DIR}/debian ${PROJECT_SOURCE_DIR}/.git)
  string(REGEX REPLACE "([][+.*()^$?|\\\\])" "\\\\\\1" path ${path})
  list(APPEND CPACK_SOURCE_IGNORE_FILES "^${path}(/|$)")
endforeach()
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
# Some files of a package belong below /usr, whatever the prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION mail)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

find_program(RPMBUILD rpmbuild)
if(RPMBUILD)
  list(APPEND CPACK_GENERATOR RPM)
endif()
set(CPACK_RPM_COMPONENT_INSTALL ON)
set(CPACK_PACKAGE_RELOCATABLE OFF)
set(CPACK_RPM_FILE_NAME RPM-DEFAULT)
set(CPACK_RPM_PACKAGE_LICENSE MIT)
set(CPACK_RPM_PACKAGE_GROUP System/Daemons)
string(REGEX REPLACE " <.*" "" CPACK_PACKAGE_VENDOR "${TELUMA_MAINTAINER}")
set(CPACK_RPM_PACKAGE_DESCRIPTION "${CPACK_PACKAGE_DESCRIPTION}")
# The directories of the system and of the server are not the wizard's.
set(CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION
    /usr/sbin /usr/share/licenses /usr/share/man /usr/share/man/man8 /opt /opt/teluma /opt/teluma/bin
    /opt/teluma/share /opt/teluma/share/man /opt/teluma/share/man/man8)
set(CPACK_RPM_SPEC_MORE_DEFINE "%define packager ${TELUMA_MAINTAINER}
%define _buildhost localhost
%define use_source_date_epoch_as_buildtime 1
%define clamp_mtime_to_source_date_epoch 1
%define _build_id_links none")

find_program(GZIP_PROGRAM gzip)
if(GZIP_PROGRAM)
  include(cmake/package_files.cmake)
endif()
configure_file(cmake/package_choices.cmake.in ${PROJECT_BINARY_DIR}/packaging/choices.cmake @ONLY)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_BINARY_DIR}/packaging/choices.cmake)
include(CPack)
