# Where `cmake --install` puts the program and its man page: where the server of the running system
# lives, unless another prefix has been named.

include(cmake/server_prefix.cmake)

if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
  server_prefix(${CMAKE_SYSTEM_NAME} prefix)
  set(CMAKE_INSTALL_PREFIX ${prefix} CACHE PATH "Where the server is installed" FORCE)
endif()

install(TARGETS teluma-wizard RUNTIME DESTINATION bin COMPONENT program)
install(FILES docs/teluma-wizard.8 DESTINATION share/man/man8 COMPONENT manual)
