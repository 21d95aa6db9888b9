# The layering, enforced by the build: each file of tests/arch/violations is compiled as part of
# a layer; those that include a layer their own may not use must fail to compile, naming the
# header, and the control case (an include the layer may use) must compile.
#   tq_layering_case(NAME LAYER FILE EXPECT_FAIL)
function(tq_layering_case name layer file expect_fail)
  add_library(layering_${name} OBJECT EXCLUDE_FROM_ALL ${file})
  target_link_libraries(layering_${name} PRIVATE tq_${layer})
  add_test(NAME layering_${name}
           COMMAND ${CMAKE_COMMAND} --build ${CMAKE_BINARY_DIR} --target layering_${name})
  # One build of the tree at a time: these tests start the build tool on it.
  set_tests_properties(layering_${name} PROPERTIES RESOURCE_LOCK build_tree)
  if(expect_fail)
    # The compiler must stop at the forbidden header itself, not at anything else.
    file(STRINGS ${file} include_line REGEX "^#include")
    string(REGEX REPLACE "^#include \"([^\"]+)\".*" "\\1" header "${include_line}")
    set_tests_properties(layering_${name} PROPERTIES LABELS unit
      PASS_REGULAR_EXPRESSION "${header}: No such file or directory|'${header}' file not found")
  else()
    set_tests_properties(layering_${name} PROPERTIES LABELS unit)
  endif()
endfunction()

set(dir ${CMAKE_CURRENT_SOURCE_DIR}/arch/violations)
tq_layering_case(drawing_may_not_include_shell drawing ${dir}/drawing_includes_shell.cpp TRUE)
tq_layering_case(dxf_may_not_include_drawing dxf ${dir}/dxf_includes_drawing.cpp TRUE)
tq_layering_case(base_may_not_include_ports base ${dir}/base_includes_ports.cpp TRUE)
tq_layering_case(site_may_not_include_info site ${dir}/site_includes_info.cpp TRUE)
tq_layering_case(drawing_may_include_site drawing ${dir}/drawing_includes_site.cpp FALSE)
