# How a release is compiled and linked: hardened, since it runs as root.

include(CheckCXXSourceCompiles)

add_compile_options("$<$<CONFIG:Release>:-fPIE;-fstack-protector-strong>")
add_compile_options("$<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")

# release_link_option(NAME OPTION...): links a release with the OPTIONs where the linker knows them.
function(release_link_option name)
  set(CMAKE_REQUIRED_LINK_OPTIONS ${ARGN})
  check_cxx_source_compiles("#include <string>
    int main(int count, char**) { return std::string(count, 'x').empty() ? 1 : 0; }" ${name})
  if(${name})
    add_link_options("$<$<CONFIG:Release>:${ARGN}>")
  endif()
endfunction()

release_link_option(LINKS_POSITION_INDEPENDENT -pie)
# The addresses of library functions are found at the start and are read-only from then on.
release_link_option(LINKS_READ_ONLY_RELOCATIONS -Wl,-z,relro -Wl,-z,now)
