# One source folder is one static library with one public include root:
#
#   norva_library(signal LINKS zuvsys gen)
#
# makes norva_signal from every .cpp of the folder. Headers for others lie in include/signal/ and are
# included as "signal/fft.h"; headers beside the sources are private to the folder. LINKS names what the
# folder may use: nothing else is on its include path.

add_library(norva_options INTERFACE)
target_compile_options(norva_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Warns about text + text of the standard library itself (GCC bug 105651).
  target_compile_options(norva_options INTERFACE -Wno-restrict)
endif()
if(NORVA_WERROR)
  target_compile_options(norva_options INTERFACE -Werror)
endif()
if(NORVA_SANITIZE)
  target_compile_options(norva_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                                 -fno-omit-frame-pointer)
  target_link_options(norva_options INTERFACE -fsanitize=address,undefined)
endif()
if(NORVA_FUZZ)
  # Coverage everywhere, the fuzzer's own main function only in the fuzz targets.
  set(norva_fuzz_flags -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined)
  target_compile_options(norva_options INTERFACE ${norva_fuzz_flags} -fno-omit-frame-pointer)
  target_link_options(norva_options INTERFACE ${norva_fuzz_flags})
endif()

function(norva_library name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_library(norva_${name} STATIC ${sources})
  target_include_directories(norva_${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/include
                                           PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(norva_${name} PRIVATE norva_options)
  foreach(below ${ARG_LINKS})
    target_link_libraries(norva_${name} PUBLIC norva_${below})
  endforeach()
endfunction()

# norva_test(fileio LINKS fileio [LABEL unit|gui|e2e] [INTERNAL folder])
# makes test_fileio from every .cpp of the folder. INTERNAL opens the private headers of one source folder.
function(norva_test name)
  cmake_parse_arguments(ARG "" "LABEL;INTERNAL" "LINKS" ${ARGN})
  if(NOT ARG_LABEL)
    set(ARG_LABEL unit)
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_executable(test_${name} ${sources})
  target_link_libraries(test_${name} PRIVATE norva_options norva_test_support GTest::gtest)
  foreach(below ${ARG_LINKS})
    target_link_libraries(test_${name} PRIVATE norva_${below})
  endforeach()
  if(ARG_INTERNAL)
    target_include_directories(test_${name} PRIVATE ${CMAKE_SOURCE_DIR}/${ARG_INTERNAL})
  endif()
  gtest_discover_tests(test_${name} DISCOVERY_TIMEOUT 60
                       PROPERTIES LABELS ${ARG_LABEL} TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()
