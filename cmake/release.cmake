# How a release is compiled and linked: hardened, since it runs as root; and small, since nothing in
# it computes for long and every page of it has to be loaded and stays in memory.

include(CheckCXXSourceCompiles)
include(CheckIPOSupported)

set(is_shared "$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>")  # what tests preload
add_compile_options("$<$<AND:$<CONFIG:Release>,$<NOT:${is_shared}>>:-fPIE>")
add_compile_options("$<$<CONFIG:Release>:-fstack-protector-strong>")
add_compile_options("$<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
add_compile_options("$<$<CONFIG:Release>:-Os;-ffunction-sections;-fdata-sections>")

# The program catches no exceptions: one that is thrown ends it, as it would without these tables.
set(flags_of_all "${CMAKE_CXX_FLAGS_RELEASE}")
foreach(flag -fno-exceptions -fno-unwind-tables -fno-asynchronous-unwind-tables)
  string(APPEND CMAKE_CXX_FLAGS_RELEASE " ${flag}")
endforeach()

check_ipo_supported(RESULT ipo_works LANGUAGES CXX)
set(CMAKE_INTERPROCEDURAL_OPTIMIZATION_RELEASE ${ipo_works})

# release_link_option(NAME OPTION...): links a release with the OPTIONs where the linker knows them.
function(release_link_option name)
  set(CMAKE_REQUIRED_LINK_OPTIONS ${ARGN})
  check_cxx_source_compiles("#include <string>
    int main(int count, char**) { return std::string(count, 'x').empty() ? 1 : 0; }" ${name})
  if(${name})
    add_link_options("$<$<CONFIG:Release>:${ARGN}>")
  endif()
endfunction()

# Of the C++ library the program uses a few functions; to load, relocate and keep all of it would
# cost more than everything else.
release_link_option(LINKS_STATIC_RUNTIME -static-libstdc++ -static-libgcc)
release_link_option(LINKS_WITHOUT_UNUSED_SECTIONS -Wl,--gc-sections)
release_link_option(LINKS_NEEDED_LIBRARIES_ONLY -Wl,--as-needed)
release_link_option(LINKS_POSITION_INDEPENDENT -pie)
# Other systems' linkers may know how to pack what their loaders can't unpack.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  release_link_option(LINKS_PACKED_RELOCATIONS -Wl,-z,pack-relative-relocs)
endif()
# The addresses of library functions are found at the start and are read-only from then on.
release_link_option(LINKS_READ_ONLY_RELOCATIONS -Wl,-z,relro -Wl,-z,now)
