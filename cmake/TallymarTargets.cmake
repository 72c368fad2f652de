# The shape of the tree, said once: every folder below src/ is one library without Qt, its windows (frm*.cpp) are a second
# one with Qt. A body that includes a window's header, or an upper folder's, does not link.

add_library(tallymar_options INTERFACE)
target_include_directories(tallymar_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(tallymar_options INTERFACE
  -ffp-contract=off  # a cent must not depend on whether the processor fuses a product with a sum
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wconversion -Wno-sign-conversion
  -Wno-restrict  # g++ 12 sees an overlap in "literal" + std::string(...) that is not there
  $<$<BOOL:${TALLYMAR_WERROR}>:-Werror>)
if(TALLYMAR_SANITIZE)
  target_compile_options(tallymar_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(tallymar_options INTERFACE -fsanitize=address,undefined)
endif()

if(TALLYMAR_FUZZ)
  target_compile_options(tallymar_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined)
  target_link_options(tallymar_options INTERFACE -fsanitize=address,undefined)
endif()

# tallymar_body(<target> [LINKS <target>...] [ONLY <file>...] [EXCEPT <file>...])
# The toolkit-free half of the current folder: every .cpp that is no window.
function(tallymar_body target)
  cmake_parse_arguments(ARG "" "" "LINKS;ONLY;EXCEPT" ${ARGN})
  if(ARG_ONLY)
    set(sources ${ARG_ONLY})
  else()
    file(GLOB sources CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.cpp)
    list(FILTER sources EXCLUDE REGEX "^frm")
    if(ARG_EXCEPT)
      list(REMOVE_ITEM sources ${ARG_EXCEPT})
    endif()
  endif()
  if(NOT sources)  # nothing but headers
    add_library(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE ${ARG_LINKS})
    target_include_directories(${target} INTERFACE ${CMAKE_SOURCE_DIR}/src)
    return()
  endif()
  add_library(${target} STATIC ${sources})
  target_link_libraries(${target} PUBLIC ${ARG_LINKS} PRIVATE tallymar_options)
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
endfunction()

# tallymar_windows(<target> [LINKS <target>...] [ALL])
# The windows of the current folder: frm*.cpp, or with ALL every .cpp (a folder that is nothing but windows).
function(tallymar_windows target)
  cmake_parse_arguments(ARG "ALL" "" "LINKS" ${ARGN})
  if(ARG_ALL)
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  else()
    file(GLOB sources CONFIGURE_DEPENDS frm*.cpp frm*.h)
  endif()
  add_library(${target} STATIC ${sources})
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
  target_link_libraries(${target} PUBLIC ${ARG_LINKS} Qt6::Widgets PRIVATE tallymar_options)
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
endfunction()

# tallymar_tests(<target> [LINKS <target>...] [QT])
# One GoogleTest program from every .cpp of the current folder. QT: run it offscreen, with a QApplication of its own main.
function(tallymar_tests target)
  cmake_parse_arguments(ARG "QT" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  add_executable(${target} ${sources})
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_compile_definitions(${target} PRIVATE TALLYMAR_SOURCE_DIR="${CMAKE_SOURCE_DIR}" TALLYMAR_BINARY_DIR="${CMAKE_BINARY_DIR}")
  target_link_libraries(${target} PRIVATE ${ARG_LINKS} GTest::gmock tallymar_options)
  if(ARG_QT)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    target_link_libraries(${target} PRIVATE tests_support_qt Qt6::Test)
    set(environment "QT_QPA_PLATFORM=offscreen")
  else()
    target_link_libraries(${target} PRIVATE tests_support GTest::gtest_main)
  endif()
  gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300 ENVIRONMENT "${environment}")
endfunction()

# tallymar_quiet_regex(<file>...)
# Files of the current folder that use std::regex: with the sanitizers g++ 12 warns of uninitialised values in the library itself.
function(tallymar_quiet_regex)
  if(TALLYMAR_SANITIZE)
    set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -Wno-maybe-uninitialized)
  endif()
endfunction()
