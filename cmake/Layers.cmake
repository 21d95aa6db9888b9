# One library target per layer, each seeing only the headers of the layers it may use.
#
# Every header is included as "layer/File.hpp". A layer's target publishes an include folder
# of its own that holds a single link, <layer> → the layer's source folder; so a file sees a
# layer's headers only when its target links that layer, and a wrong include fails to compile.
set(TQ_LAYER_INCLUDE_ROOT ${CMAKE_BINARY_DIR}/layers)

# tq_layer_includes(TARGET LAYER DIR): publish DIR as "LAYER/…" to TARGET's users.
function(tq_layer_includes target layer dir visibility)
  set(root ${TQ_LAYER_INCLUDE_ROOT}/${layer})
  file(MAKE_DIRECTORY ${root})
  if(NOT EXISTS ${root}/${layer})
    file(CREATE_LINK ${dir} ${root}/${layer} SYMBOLIC)
  endif()
  target_include_directories(${target} ${visibility} ${root})
endfunction()

# tq_layer(NAME DIR [USES layer...] [SOURCES file...] [GLOB] [INCLUDE_AS prefix]): the target
# tq_NAME over DIR, whose headers are included as "NAME/…" (or "prefix/…"). With GLOB the
# sources are DIR/*.cpp. A layer without sources is an interface target.
function(tq_layer name dir)
  cmake_parse_arguments(L "GLOB" "INCLUDE_AS" "USES;SOURCES;LINKS" ${ARGN})
  set(prefix ${name})
  if(L_INCLUDE_AS)
    set(prefix ${L_INCLUDE_AS})
  endif()
  set(sources ${L_SOURCES})
  if(L_GLOB)
    file(GLOB globbed CONFIGURE_DEPENDS ${dir}/*.cpp)
    list(APPEND sources ${globbed})
  endif()
  set(target tq_${name})
  if(sources)
    add_library(${target} STATIC ${sources})
    set(visibility PUBLIC)
  else()
    add_library(${target} INTERFACE)
    set(visibility INTERFACE)
  endif()
  tq_layer_includes(${target} ${prefix} ${dir} ${visibility})
  foreach(use IN LISTS L_USES)
    target_link_libraries(${target} ${visibility} tq_${use})
  endforeach()
  if(L_LINKS)
    target_link_libraries(${target} ${visibility} ${L_LINKS})
  endif()
endfunction()
