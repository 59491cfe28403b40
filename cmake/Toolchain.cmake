set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
  set(CMAKE_OBJCXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

if(APPLE)
  enable_language(OBJCXX)
  set(CMAKE_OBJCXX_STANDARD 20)
  set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
  set(CMAKE_OBJCXX_EXTENSIONS OFF)
  add_compile_options($<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc>)
endif()

# What every file is compiled with, and beside that what the build asks for.
add_library(nimbrel_warnings INTERFACE)
add_library(nimbrel_options INTERFACE)
target_link_libraries(nimbrel_options INTERFACE nimbrel_warnings)
target_compile_options(nimbrel_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
  -Woverloaded-virtual -Wimplicit-fallthrough -Wformat=2
  # Left-out members of an aggregate have their defaults.
  -Wno-missing-field-initializers
  # GCC 12 sees uninitialised members in every moved-from std::variant.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
target_compile_definitions(nimbrel_warnings INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII
  QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
if(NIMBREL_WERROR)
  target_compile_options(nimbrel_warnings INTERFACE -Werror)
endif()
if(NIMBREL_SANITIZE)
  target_compile_options(nimbrel_options INTERFACE -fsanitize=${NIMBREL_SANITIZE} -fno-omit-frame-pointer -g1)
  # Clang minds that RapidJSON adds to the null pointer of an empty stack, before it allocates one.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND NIMBREL_SANITIZE MATCHES "undefined")
    target_compile_options(nimbrel_options INTERFACE -fno-sanitize=pointer-overflow)
  endif()
  target_link_options(nimbrel_options INTERFACE -fsanitize=${NIMBREL_SANITIZE})
else()
  # A history of secrets deserves the cheap hardening that every distribution turns on.
  target_compile_options(nimbrel_options INTERFACE -fstack-protector-strong)
  # On a Mac the compiler and the linker do the rest unasked.
  if(NOT APPLE)
    target_compile_options(nimbrel_options INTERFACE $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
    target_link_options(nimbrel_options INTERFACE -Wl,-z,relro,-z,now -Wl,--as-needed)
  endif()
endif()
