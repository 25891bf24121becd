# What a Debian package of the wizard holds besides the program: what Debian asks of every package,
# compressed where it asks for that, and links by which root's shell and man(1) find what is outside
# of /usr.

set(packaging ${PROJECT_SOURCE_DIR}/packaging/debian)
set(made ${PROJECT_BINARY_DIR}/debian)

# compressed(SOURCE NAME): makes NAME.gz, without the time of compression, so that the same sources
# give the same package.
function(compressed source name)
  configure_file(${PROJECT_SOURCE_DIR}/${source} ${made}/${name} COPYONLY)
  execute_process(COMMAND ${GZIP_PROGRAM} -9 --no-name --force --keep ${made}/${name}
                  RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "gzip has failed on ${made}/${name}: ${result}")
  endif()
endfunction()
compressed(packaging/debian/changelog changelog)
compressed(docs/teluma-wizard.8 teluma-wizard.8)

# lintian's messages name paths without the slash in front.
string(REGEX REPLACE "^/" "" overridden_prefix ${CMAKE_INSTALL_PREFIX})
configure_file(${packaging}/lintian-overrides.in ${made}/overrides/teluma-wizard @ONLY)

# placed(FILE DIRECTORY): the package has FILE in DIRECTORY.
function(placed file directory)
  install(FILES ${file} DESTINATION ${directory} COMPONENT debian EXCLUDE_FROM_ALL)
endfunction()
placed(${made}/teluma-wizard.8.gz share/man/man8)
placed(${made}/changelog.gz /usr/share/doc/teluma-wizard)
placed(${packaging}/copyright /usr/share/doc/teluma-wizard)

# Below /usr itself everything is found, and the link to the man page would replace the page.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  file(MAKE_DIRECTORY ${made}/sbin ${made}/man8)
  file(CREATE_LINK ${CMAKE_INSTALL_PREFIX}/bin/teluma-wizard ${made}/sbin/teluma-wizard SYMBOLIC)
  file(CREATE_LINK ${CMAKE_INSTALL_PREFIX}/share/man/man8/teluma-wizard.8.gz
       ${made}/man8/teluma-wizard.8.gz SYMBOLIC)
  placed(${made}/sbin/teluma-wizard /usr/sbin)
  placed(${made}/man8/teluma-wizard.8.gz /usr/share/man/man8)
  placed(${made}/overrides/teluma-wizard /usr/share/lintian/overrides)
endif()

# Directories are made with the umask of whoever makes the package, which may keep others out.
install(CODE [[
  if(DEFINED ENV{DESTDIR})
    execute_process(COMMAND find "$ENV{DESTDIR}" -type d -exec chmod 755 {} +)
  endif()
]] COMPONENT debian EXCLUDE_FROM_ALL)
