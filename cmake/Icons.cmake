# nimbrel_icon(SIDE PICTURE): draws the icon in a square of so many pixels.
set(NIMBREL_ICON_DRAWINGS ${PROJECT_SOURCE_DIR}/data/icons/app.nimbrel.Nimbrel)
add_executable(icon_painter ${PROJECT_SOURCE_DIR}/data/icons/IconPainter.cpp)
target_link_libraries(icon_painter PRIVATE nimbrel_warnings Qt6::Gui Qt6::Svg)

function(nimbrel_icon side picture)
  set(drawing ${NIMBREL_ICON_DRAWINGS}.svg)
  # The small ones have a drawing of their own.
  if(side LESS_EQUAL 32)
    set(drawing ${NIMBREL_ICON_DRAWINGS}-small.svg)
  endif()
  add_custom_command(OUTPUT ${picture} COMMAND icon_painter ${drawing} ${side} ${picture}
    DEPENDS icon_painter ${drawing} VERBATIM)
endfunction()
