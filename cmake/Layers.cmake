# The floors of the house, lowest first. A folder may use those before it, never those after it;
# folders on one floor (joined by "+") do not use each other.
set(CAPD_FLOORS
  base embedded db deploy toolkit print components session reports
  patients+funds charges+wardrequests hub+visits+assessment app)
string(REPLACE "+" ";" CAPD_LAYERS "${CAPD_FLOORS}")

function(capd_floor_of layer result)
  set(number 0)
  foreach(floor IN LISTS CAPD_FLOORS)
    string(REPLACE "+" ";" rooms "${floor}")
    if(layer IN_LIST rooms)
      set(${result} ${number} PARENT_SCOPE)
      return()
    endif()
    math(EXPR number "${number} + 1")
  endforeach()
  message(FATAL_ERROR "'${layer}' is not a folder of the house (cmake/Layers.cmake)")
endfunction()

# The headers that nearly every source includes are compiled once: those of Qt Core, or of the widgets
# too where a folder uses them.
add_library(core_headers OBJECT ${CMAKE_SOURCE_DIR}/cmake/Headers.cpp)
target_link_libraries(core_headers PRIVATE Qt6::Core)
target_precompile_headers(core_headers PRIVATE <QtCore> <algorithm> <functional> <map> <memory>
  <optional> <string> <unordered_map> <vector>)
add_library(widget_headers OBJECT ${CMAKE_SOURCE_DIR}/cmake/Headers.cpp)
target_link_libraries(widget_headers PRIVATE Qt6::Widgets)
target_precompile_headers(widget_headers PRIVATE <QtWidgets> <algorithm> <functional> <map> <memory>
  <optional> <string> <unordered_map> <vector>)

# What a folder's sources and its tests start from; set on its target.
function(capd_headers_of target)
  set(headers core_headers)
  foreach(used IN LISTS ARGN)
    if(used STREQUAL Qt6::Widgets)
      set(headers widget_headers)
    elseif(TARGET ${used})
      get_target_property(theirs ${used} PRECOMPILE_HEADERS_REUSE_FROM)
      if(theirs STREQUAL widget_headers)
        set(headers widget_headers)
      endif()
    endif()
  endforeach()
  target_precompile_headers(${target} REUSE_FROM ${headers})
endfunction()

# add_layer(charges USES db toolkit LIBRARIES Qt6::Widgets)
# One static library made of every source, window layout and resource in this folder.
function(add_layer layer)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "USES;LIBRARIES")
  capd_floor_of(${layer} own)
  foreach(used IN LISTS arg_USES)
    capd_floor_of(${used} floor)
    if(NOT floor LESS own)
      message(FATAL_ERROR "src/${layer} may not use src/${used}: that runs upward or sideways")
    endif()
  endforeach()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp *.h *.ui *.qrc)
  list(FILTER sources EXCLUDE REGEX "/(main|OneLocale)\\.cpp$")
  add_library(${layer} STATIC ${sources})
  target_include_directories(${layer} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${layer} PUBLIC ${arg_USES} Qt6::Core ${arg_LIBRARIES})
  capd_headers_of(${layer} ${arg_USES} ${arg_LIBRARIES})
endfunction()

# Every tests/<layer>/tst_*.cpp is a test program of its own, labelled with its folder; the target
# tests_<layer> makes them.
function(add_layer_tests layer)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "USES")
  file(GLOB programs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${layer}/tst_*.cpp)
  add_custom_target(tests_${layer})
  foreach(program IN LISTS programs)
    get_filename_component(name ${program} NAME_WE)
    add_executable(${name} ${program})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_compile_definitions(${name} PRIVATE
      CAPD_SOURCE_DIR="${CMAKE_SOURCE_DIR}" CAPD_TEST_DIR="${CMAKE_CURRENT_SOURCE_DIR}/${layer}")
    target_link_libraries(${name} PRIVATE ${layer} ${arg_USES} Qt6::Test)
    capd_headers_of(${name} ${layer} ${arg_USES})
    add_dependencies(tests_${layer} ${name})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES LABELS ${layer} TIMEOUT 1200
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=UTC;QTEST_FUNCTION_TIMEOUT=1100000")
  endforeach()
endfunction()
