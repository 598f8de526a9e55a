# Flags that every target of the project shares, as one interface target to link.
add_library(tidewell_options INTERFACE)

target_include_directories(tidewell_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(
  tidewell_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wnon-virtual-dtor
            -Wold-style-cast
            -Wcast-qual
            -Wextra-semi
            -Wimplicit-fallthrough
            -Werror)

# g++ 12 sees overlapping copies in "text" + std::string that are not there (its bug 105651).
target_compile_options(tidewell_options INTERFACE -Wno-restrict)

# The numbers are part of the result: multiply and add stay two roundings, at every build type, and
# every translation unit that sees an inline function of the engine compiles it alike.
target_compile_options(tidewell_options INTERFACE -mavx2 -ffp-contract=off)

if(TIDEWELL_SANITIZE STREQUAL "address")
  set(sanitizer_flags -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
elseif(TIDEWELL_SANITIZE STREQUAL "thread")
  set(sanitizer_flags -fsanitize=thread -fno-omit-frame-pointer)
elseif(NOT TIDEWELL_SANITIZE STREQUAL "")
  message(FATAL_ERROR "TIDEWELL_SANITIZE must be empty, 'address' or 'thread', not '${TIDEWELL_SANITIZE}'")
endif()
if(sanitizer_flags)
  # In instrumented code g++ sees uses of uninitialised variables that are not there (its manual warns
  # of that), in <regex> for one. The plain builds look for the real ones.
  target_compile_options(tidewell_options INTERFACE ${sanitizer_flags} -Wno-maybe-uninitialized)
  target_link_options(tidewell_options INTERFACE ${sanitizer_flags})
endif()
