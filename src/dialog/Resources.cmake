# The resource script built into tq_dialog: the build embeds the bytes of src/res/TQTStdInfo.rc
# and src/res/resource.h into a generated source, made again whenever either file changes.
# Users of tq_dialog include the ids as "res/resource.h".
set(TQ_RES_DIR ${PROJECT_SOURCE_DIR}/src/res)
set(TQ_EMBEDDED_RESOURCES ${CMAKE_CURRENT_BINARY_DIR}/EmbeddedResources.cpp)
add_custom_command(
  OUTPUT ${TQ_EMBEDDED_RESOURCES}
  COMMAND ${CMAKE_COMMAND} -DSCRIPT=${TQ_RES_DIR}/TQTStdInfo.rc -DHEADER=${TQ_RES_DIR}/resource.h
          -DOUTPUT=${TQ_EMBEDDED_RESOURCES} -P ${CMAKE_CURRENT_LIST_DIR}/EmbedResources.cmake
  DEPENDS ${TQ_RES_DIR}/TQTStdInfo.rc ${TQ_RES_DIR}/resource.h ${CMAKE_CURRENT_LIST_DIR}/EmbedResources.cmake
  COMMENT "Embedding the resource script"
  VERBATIM)
target_sources(tq_dialog PRIVATE ${TQ_EMBEDDED_RESOURCES})
tq_layer_includes(tq_dialog res ${TQ_RES_DIR} PUBLIC)
