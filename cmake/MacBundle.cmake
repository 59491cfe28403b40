# Nimbrel.app: the program with its description, its icon, its texts and its intents. CMake would name the bundle as it
# names the program; theirs differ, so the bundle is put together here, with the program built into its place.
#
# A build is for one architecture, the compiler's own or the one in CMAKE_OSX_ARCHITECTURES.
set(BUNDLE ${CMAKE_BINARY_DIR}/Nimbrel.app)
set(CONTENTS ${BUNDLE}/Contents)
set(MAC_DATA ${PROJECT_SOURCE_DIR}/data/macos)

set(architecture ${CMAKE_OSX_ARCHITECTURES})
if(NOT architecture)
  set(architecture ${CMAKE_SYSTEM_PROCESSOR})
endif()
list(LENGTH architecture count)
if(count GREATER 1)
  message(FATAL_ERROR "One architecture to a build: not ${CMAKE_OSX_ARCHITECTURES}")
endif()
set(triple ${architecture}-apple-macos${CMAKE_OSX_DEPLOYMENT_TARGET})

# Asks the developer tools for a path.
function(nimbrel_xcrun variable)
  execute_process(COMMAND xcrun ${ARGN}
    OUTPUT_VARIABLE output OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(${variable} "${output}" PARENT_SCOPE)
endfunction()
nimbrel_xcrun(SWIFTC --sdk macosx --find swiftc)
set(SDK "${CMAKE_OSX_SYSROOT}")
if(NOT IS_DIRECTORY "${SDK}")
  nimbrel_xcrun(SDK --sdk macosx --show-sdk-path)
endif()
cmake_path(GET SWIFTC PARENT_PATH SWIFT_LIBRARIES)
cmake_path(APPEND SWIFT_LIBRARIES ../lib/swift/macosx)

# The intents, in the only language that the system takes them in: an object, and what can be said of its types without
# running it, which the metadata are made from.
set(INTENTS ${CMAKE_BINARY_DIR}/intents)
set(INTENTS_HEADER ${PROJECT_SOURCE_DIR}/src/platform/common/NimbrelIntents.h)
set(INTENTS_OBJECT ${INTENTS}/NimbrelIntents.o)
set(INTENTS_VALUES ${INTENTS}/NimbrelIntents.swiftconstvalues)
set(PROTOCOLS ${PROJECT_SOURCE_DIR}/cmake/AppIntentsProtocols.json)
file(GLOB INTENTS_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/intents/macos/*.swift)
list(JOIN INTENTS_SOURCES "\n" lines)
file(CONFIGURE OUTPUT ${INTENTS}/sources CONTENT "${lines}\n" @ONLY)
file(CONFIGURE OUTPUT ${INTENTS}/values CONTENT "${INTENTS_VALUES}\n" @ONLY)
add_custom_command(OUTPUT ${INTENTS_OBJECT} ${INTENTS_VALUES}
  COMMAND ${SWIFTC} -parse-as-library -swift-version 5 -whole-module-optimization $<IF:$<CONFIG:Debug>,-Onone,-O>
    -module-name NimbrelIntents -target ${triple} -sdk ${SDK} -import-objc-header ${INTENTS_HEADER}
    -emit-object -o ${INTENTS_OBJECT} -emit-const-values -emit-const-values-path ${INTENTS_VALUES}
    -Xfrontend -const-gather-protocols-file -Xfrontend ${PROTOCOLS} ${INTENTS_SOURCES}
  DEPENDS ${INTENTS_SOURCES} ${INTENTS_HEADER} ${PROTOCOLS}
  COMMENT "Compiling the intents" VERBATIM)
add_custom_target(nimbrel_intents DEPENDS ${INTENTS_OBJECT} ${INTENTS_VALUES})

add_dependencies(nimbrel nimbrel_intents)
target_link_libraries(nimbrel PRIVATE ${INTENTS_OBJECT})
# Swift's own libraries are the system's; what an older system lacks of them comes with the compiler.
target_link_options(nimbrel PRIVATE "-L${SDK}/usr/lib/swift" "-L${SWIFT_LIBRARIES}"
  # By what is linked the metadata's tool knows a program with intents.
  "LINKER:-dependency_info,${INTENTS}/dependencies.dat")
set_target_properties(nimbrel PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${CONTENTS}/MacOS
  BUILD_RPATH "@executable_path/../Frameworks;/usr/lib/swift")

# nimbrel_bundle_list(SOURCE PLACE): checks a list of properties or of texts and puts it into the bundle.
set(bundled "")
function(nimbrel_bundle_list source place)
  set(output ${CONTENTS}/${place})
  add_custom_command(OUTPUT ${output}
    COMMAND plutil -lint -s ${source}
    COMMAND ${CMAKE_COMMAND} -E copy ${source} ${output}
    DEPENDS ${source} VERBATIM)
  set(bundled ${bundled} ${output} PARENT_SCOPE)
endfunction()
configure_file(${MAC_DATA}/Info.plist.in ${CMAKE_BINARY_DIR}/Info.plist @ONLY)
nimbrel_bundle_list(${CMAKE_BINARY_DIR}/Info.plist Info.plist)
foreach(language es en)
  foreach(table InfoPlist Localizable AppShortcuts)
    nimbrel_bundle_list(${MAC_DATA}/${language}.lproj/${table}.strings Resources/${language}.lproj/${table}.strings)
  endforeach()
endforeach()

# The icon, each size for ordinary and for fine screens.
set(ICONSET ${CMAKE_BINARY_DIR}/Nimbrel.iconset)
set(pictures "")
foreach(points 16 32 128 256 512)
  math(EXPR doubled "2 * ${points}")
  set(picture ${ICONSET}/icon_${points}x${points})
  nimbrel_icon(${points} ${picture}.png)
  nimbrel_icon(${doubled} ${picture}@2x.png)
  list(APPEND pictures ${picture}.png ${picture}@2x.png)
endforeach()
set(ICON ${CONTENTS}/Resources/Nimbrel.icns)
add_custom_command(OUTPUT ${ICON}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CONTENTS}/Resources
  COMMAND iconutil -c icns -o ${ICON} ${ICONSET}
  DEPENDS ${pictures} VERBATIM)
list(APPEND bundled ${ICON})

# What Shortcuts reads of the intents, from the finished program.
set(metadata ${PROJECT_SOURCE_DIR}/cmake/app-intents-metadata.sh)
add_custom_command(OUTPUT ${INTENTS}/metadata.done
  COMMAND bash ${metadata} ${BUNDLE} ${INTENTS} ${SDK} ${triple} ${CMAKE_OSX_DEPLOYMENT_TARGET}
  COMMAND ${CMAKE_COMMAND} -E touch ${INTENTS}/metadata.done
  DEPENDS nimbrel ${metadata} ${INTENTS_VALUES} ${bundled}
  COMMENT "Writing down the intents" VERBATIM)
add_custom_target(nimbrel_app ALL DEPENDS ${bundled} ${INTENTS}/metadata.done)
add_dependencies(nimbrel_app nimbrel nimbrel_intents)

install(DIRECTORY ${BUNDLE} DESTINATION . USE_SOURCE_PERMISSIONS)
