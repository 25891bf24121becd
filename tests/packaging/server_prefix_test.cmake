# cmake -P server_prefix_test.cmake: fails unless every system has the server's own directory for a
# prefix.

include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/server_prefix.cmake)

function(expect_prefix system expected)
  server_prefix(${system} prefix)
  if(NOT prefix STREQUAL expected)
    message(SEND_ERROR "${system}: ${prefix}, expected ${expected}")
  endif()
endfunction()

expect_prefix(Linux /opt/teluma)
expect_prefix(SunOS /opt/teluma)
expect_prefix(FreeBSD /usr/local/teluma)
expect_prefix(OpenBSD /usr/local/teluma)
expect_prefix(NetBSD /usr/pkg/teluma)
expect_prefix(Darwin /opt/teluma)
