# What the build cannot see, checked by reading the sources (the layering itself is enforced by
# the build: see Layering.cmake). ICU's headers lie in the system's include folder, visible to
# every target, so:
#  - only src/base includes ICU;
#  - nothing under src/ (the core and the base below it) prints, aborts or exits.
file(GLOB_RECURSE sources "${SOURCE_DIR}/src/*.hpp" "${SOURCE_DIR}/src/*.cpp" "${SOURCE_DIR}/src/*.h")
set(icu_re "#[ \t]*include[ \t]*[<\"]unicode/")
set(print_re "(std::cout|std::cerr|std::clog|[^a-z_]printf[ \t]*\\(|[^a-z_]puts[ \t]*\\(|std::abort|[^a-z_:]abort[ \t]*\\(|std::exit|[^a-z_:]exit[ \t]*\\(|std::quick_exit|std::terminate)")
set(problems "")
foreach(file IN LISTS sources)
  file(READ "${file}" text)
  file(RELATIVE_PATH rel "${SOURCE_DIR}" "${file}")
  if(NOT rel MATCHES "^src/base/" AND text MATCHES "${icu_re}")
    string(APPEND problems "\n  ${rel}: includes ICU outside src/base")
  endif()
  if(text MATCHES "${print_re}")
    string(APPEND problems "\n  ${rel}: core code prints or ends the process (${CMAKE_MATCH_0})")
  endif()
endforeach()
if(problems)
  message(FATAL_ERROR "Architecture rules broken:${problems}")
endif()
list(LENGTH sources count)
message(STATUS "architecture rules hold for ${count} files")
