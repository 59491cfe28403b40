# nimbrel_translations(TARGET FILE.ts …): compiles translations into the resource folder ":/translations" of a target.
find_program(LRELEASE_PROGRAM NAMES lrelease lrelease6 HINTS "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS}" REQUIRED)
find_program(LUPDATE_PROGRAM NAMES lupdate lupdate6 HINTS "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS}" REQUIRED)

function(nimbrel_translations target)
  set(entries "")
  set(compiled "")
  foreach(source IN LISTS ARGN)
    get_filename_component(name "${source}" NAME_WE)
    set(output "${CMAKE_CURRENT_BINARY_DIR}/${name}.qm")
    add_custom_command(OUTPUT "${output}"
      COMMAND "${LRELEASE_PROGRAM}" -silent -removeidentical "${CMAKE_CURRENT_SOURCE_DIR}/${source}" -qm "${output}"
      DEPENDS "${source}")
    list(APPEND compiled "${output}")
    string(APPEND entries "<file>${name}.qm</file>")
  endforeach()
  set(collection "${CMAKE_CURRENT_BINARY_DIR}/translations.qrc")
  file(GENERATE OUTPUT "${collection}"
    CONTENT "<RCC><qresource prefix=\"/translations\">${entries}</qresource></RCC>")
  add_custom_command(OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/translations.cpp"
    COMMAND Qt6::rcc --name translations -o "${CMAKE_CURRENT_BINARY_DIR}/translations.cpp" "${collection}"
    DEPENDS ${compiled} "${collection}")
  target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/translations.cpp")
endfunction()
