# Compiler settings shared by every target.
#
# The figures of this program are defined by the order of its roundings, so no compiler may fuse a
# multiplication with an addition or reorder a sum: contraction is off and fast-math is used nowhere.
add_library(quorvanta_flags INTERFACE)
if(MSVC)
  # Never tried. Strict: nothing is contracted, and the status flags that are read after each
  # evaluation are those of the code as it is written.
  target_compile_options(quorvanta_flags INTERFACE /W4 /fp:strict /utf-8 /permissive- /EHsc /bigobj)
  target_compile_definitions(quorvanta_flags INTERFACE NOMINMAX _CRT_SECURE_NO_WARNINGS)
  if(QUORVANTA_WERROR)
    target_compile_options(quorvanta_flags INTERFACE /WX)
  endif()
  return()
endif()
target_compile_options(quorvanta_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -ffp-contract=off)
# Faults are read from the processor's status flags, never from errno: a square root is one
# instruction, and a loop over it can be vectorised.
target_compile_options(quorvanta_flags INTERFACE -fno-math-errno)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # Floating-point status flags are read after each evaluation: nothing may raise one speculatively.
  target_compile_options(quorvanta_flags INTERFACE -ffp-exception-behavior=maytrap)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # False alarm on assignments of string literals (GCC bug 105651).
  target_compile_options(quorvanta_flags INTERFACE -Wno-restrict)
endif()
if(QUORVANTA_WERROR)
  target_compile_options(quorvanta_flags INTERFACE -Werror)
endif()
if(QUORVANTA_SANITIZE)
  target_compile_definitions(quorvanta_flags INTERFACE QUORVANTA_SANITIZED)
  target_compile_options(quorvanta_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(quorvanta_flags INTERFACE -fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Instrumented code hides from GCC what is initialised: it sees false alarms inside <regex>.
    target_compile_options(quorvanta_flags INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
if(QUORVANTA_FUZZ)
  target_compile_options(quorvanta_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
