# One library target per layer, so that a wrong dependency arrow is a link error.
set(VELK_CORE_TARGETS "" CACHE INTERNAL "")

function(velk_layer name)
  cmake_parse_arguments(L "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(velk_${name} STATIC ${L_SOURCES})
  target_include_directories(velk_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(velk_${name} PUBLIC ${L_DEPENDS})
  set(VELK_CORE_TARGETS ${VELK_CORE_TARGETS} velk_${name} CACHE INTERNAL "")
endfunction()

# The core library must stay free of Qt: fail the configure step if any core layer links it.
function(velk_check_core_has_no_qt)
  foreach(target IN LISTS VELK_CORE_TARGETS)
    get_target_property(libs ${target} LINK_LIBRARIES)
    foreach(lib IN LISTS libs)
      if(lib MATCHES "Qt")
        message(FATAL_ERROR "${target} links ${lib}: the core library must not depend on Qt")
      endif()
    endforeach()
  endforeach()
endfunction()
