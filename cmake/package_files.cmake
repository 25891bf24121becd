# What a package of the wizard holds besides the program: the compressed man page, links by which
# root's shell and man(1) find what is outside of /usr, and what Debian and others ask of a package.

set(packaging ${PROJECT_SOURCE_DIR}/packaging/debian)
set(made ${PROJECT_BINARY_DIR}/packaging)

# compressed(SOURCE NAME): makes NAME.gz, without the time of compression, so that the same sources
# give the same package.
function(compressed source name)
  configure_file(${source} ${made}/${name} COPYONLY)
  execute_process(COMMAND ${GZIP_PROGRAM} -9 --no-name --force --keep ${made}/${name}
                  RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "gzip has failed on ${made}/${name}: ${result}")
  endif()
endfunction()
compressed(${made}/source/debian/changelog changelog)
compressed(${PROJECT_SOURCE_DIR}/docs/teluma-wizard.8 teluma-wizard.8)
configure_file(${packaging}/teluma-wizard.lintian-overrides ${made}/overrides/teluma-wizard COPYONLY)

# placed(COMPONENT FILE DIRECTORY): packages with the component have FILE in DIRECTORY.
function(placed component file directory)
  install(FILES ${file} DESTINATION ${directory} COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()
placed(package ${made}/teluma-wizard.8.gz share/man/man8)
placed(debian ${made}/changelog.gz /usr/share/doc/teluma-wizard)
placed(debian ${made}/source/debian/copyright /usr/share/doc/teluma-wizard)
placed(rpm ${PROJECT_SOURCE_DIR}/LICENSE /usr/share/licenses/teluma-wizard)
# By itself CPack takes what is outside of the prefix for configuration.
set(CPACK_RPM_USER_FILELIST "%license /usr/share/licenses/teluma-wizard/LICENSE")

# Below /usr itself everything is found, and the link to the man page would replace the page.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  file(MAKE_DIRECTORY ${made}/sbin ${made}/man8)
  file(CREATE_LINK ${CMAKE_INSTALL_PREFIX}/bin/teluma-wizard ${made}/sbin/teluma-wizard SYMBOLIC)
  file(CREATE_LINK ${CMAKE_INSTALL_PREFIX}/share/man/man8/teluma-wizard.8.gz
       ${made}/man8/teluma-wizard.8.gz SYMBOLIC)
  placed(package ${made}/sbin/teluma-wizard /usr/sbin)
  placed(package ${made}/man8/teluma-wizard.8.gz /usr/share/man/man8)
  list(APPEND CPACK_RPM_USER_FILELIST "%attr(-,root,root) /usr/sbin/teluma-wizard"
       "%doc /usr/share/man/man8/teluma-wizard.8.gz")
  placed(debian ${made}/overrides/teluma-wizard /usr/share/lintian/overrides)
endif()

# Directories are made with the umask of whoever makes the package, which may keep others out.
foreach(component package debian rpm)
  install(CODE [[
    if(DEFINED ENV{DESTDIR})
      execute_process(COMMAND find "$ENV{DESTDIR}" -type d -exec chmod 755 {} +)
    endif()
  ]] COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()
