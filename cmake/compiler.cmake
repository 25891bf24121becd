# Warnings, sanitizers and definitions for every target of the project.

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wno-sign-conversion
                    -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Constructors name their parameters like the members that they fill.
  add_compile_options(-Wshadow=local)
else()
  add_compile_options(-Wshadow)
endif()
if(TELUMA_WERROR)
  add_compile_options(-Werror)
endif()

if(TELUMA_SANITIZE)
  # The check of an object's class opens a pipe for each class that it meets, and tests leave the
  # wizard no descriptors.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize=vptr
                      -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The tests preload libraries into the program; a shared runtime would insist on being first,
    # and the shared one for undefined behaviour does not know where reports go.
    add_link_options(-static-libasan -static-libubsan)
  endif()
endif()

if(TELUMA_FUZZ)
  # What the fuzzer is guided by; the targets alone are linked with the fuzzer itself.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# On 32-bit systems stat(2) would refuse files with inode numbers of 64 bits.
add_compile_definitions(_FILE_OFFSET_BITS=64)
