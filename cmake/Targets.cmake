# nimbrel_library(NAME SOURCES … LINKS …): one room of the house, a static library.
function(nimbrel_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE nimbrel_options ${ARG_PRIVATE_LINKS})
endfunction()

# What a sanitizer's run needs, and no more: the tests of a label.
add_custom_target(unit_tests)
add_custom_target(threads_tests)

# nimbrel_test(NAME SOURCES … LINKS … [LABELS …] [DESKTOP]): one GoogleTest program.
# DESKTOP runs it inside a private virtual desktop with a key store and a window manager.
function(nimbrel_test name)
  cmake_parse_arguments(ARG "DESKTOP" "TIMEOUT" "SOURCES;LINKS;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE nimbrel_options ${ARG_LINKS} GTest::gmock)
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  if(ARG_DESKTOP)
    add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/scripts/virtual-desktop.sh $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABELS};desktop" TIMEOUT ${ARG_TIMEOUT})
  else()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABELS};unit" TIMEOUT ${ARG_TIMEOUT}
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
    add_dependencies(unit_tests ${name})
  endif()
  if("threads" IN_LIST ARG_LABELS)
    add_dependencies(threads_tests ${name})
  endif()
endfunction()
