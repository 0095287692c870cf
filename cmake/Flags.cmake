# SPDX-License-Identifier: MIT
# One target carries the flags that every part of the project is compiled with.
add_library(kestrin_flags INTERFACE)
target_compile_features(kestrin_flags INTERFACE cxx_std_20)
set_target_properties(kestrin_flags PROPERTIES CXX_EXTENSIONS OFF)
set(CMAKE_CXX_EXTENSIONS OFF)

if(MSVC)
  target_compile_options(kestrin_flags INTERFACE /W4 /utf-8)
else()
  target_compile_options(kestrin_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual)
endif()
# A compiler that is newer than the code sees more. That stops who works on the code, not who only builds it.
if(KESTRIN_WERROR)
  target_compile_options(kestrin_flags INTERFACE $<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>)
endif()

# g++ 12 sees overlapping copies in "text" + std::string where there are none.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(kestrin_flags INTERFACE -Wno-restrict)
endif()

# Coding and pulse times round a product and a sum one after the other. Processors that can do both in one step round once
# only, and compilers would use that step unasked.
if(NOT MSVC)
  target_compile_options(kestrin_flags INTERFACE -ffp-contract=off)
endif()

if(KESTRIN_SANITIZE)
  target_compile_options(kestrin_flags INTERFACE
    -fsanitize=${KESTRIN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # Between the sanitizers' own steps g++ loses sight of what has been set.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(kestrin_flags INTERFACE -Wno-maybe-uninitialized)
  endif()
  target_link_options(kestrin_flags INTERFACE -fsanitize=${KESTRIN_SANITIZE})
endif()

# With this, ccache also keeps what was compiled with headers compiled ahead.
if(CMAKE_CXX_COMPILER_LAUNCHER MATCHES "ccache" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(kestrin_flags INTERFACE -fpch-preprocess)
endif()
