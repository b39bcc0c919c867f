# What every target of the project shares, and the three functions that declare targets.
include(GNUInstallDirs)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(TARVOLINE_PROGRAMA "${CMAKE_BINARY_DIR}/share/tarvoline")

option(TARVOLINE_WERROR "Treat warnings as errors" OFF)
option(TARVOLINE_IPO "Link-time optimisation of the programs" OFF)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
                    -Woverloaded-virtual -Wimplicit-fallthrough)
if(TARVOLINE_WERROR)
  add_compile_options(-Werror)
endif()

# tarvoline_cabeceras(<name> [PIE] headers...): headers that many sources include, compiled once; targets take them with
# REUSE_FROM. The preset `clang` goes without, so that each source names what it uses.
set(TARVOLINE_CABECERAS <algorithm> <array> <chrono> <cstdint> <filesystem> <fstream> <functional> <map> <memory> <optional>
    <random> <set> <span> <string> <string_view> <thread> <variant> <vector>)
function(tarvoline_cabeceras nombre)
  cmake_parse_arguments(A "PIE" "" "" ${ARGN})
  set(fuente "${CMAKE_BINARY_DIR}/${nombre}.cpp")
  file(CONFIGURE OUTPUT "${fuente}" CONTENT "// Holds the precompiled headers.\n")
  add_library(${nombre} STATIC "${fuente}")
  target_precompile_headers(${nombre} PRIVATE ${TARVOLINE_CABECERAS} ${A_UNPARSED_ARGUMENTS})
  if(A_PIE)  # for the sources of programs, which are compiled so
    set_target_properties(${nombre} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_compile_options(${nombre} PRIVATE ${CMAKE_CXX_COMPILE_OPTIONS_PIE})
  endif()
endfunction()
tarvoline_cabeceras(tarvoline_cabeceras_biblioteca)
tarvoline_cabeceras(tarvoline_cabeceras_programa PIE <CLI/CLI.hpp>)

# tarvoline_biblioteca(<folder> SOURCES ... LINK ...): the library of one floor's folder, tarvoline::<folder>.
function(tarvoline_biblioteca nombre)
  cmake_parse_arguments(A "" "" "SOURCES;LINK;PRIVATE" ${ARGN})
  add_library(tarvoline_${nombre} STATIC ${A_SOURCES})
  add_library(tarvoline::${nombre} ALIAS tarvoline_${nombre})
  target_include_directories(tarvoline_${nombre} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(tarvoline_${nombre} PUBLIC ${A_LINK} PRIVATE ${A_PRIVATE})
  target_precompile_headers(tarvoline_${nombre} REUSE_FROM tarvoline_cabeceras_biblioteca)
endfunction()

# tarvoline_programa(<name> SOURCES ... LINK ...): a program in build/<preset>/bin, installed unless the tests own it.
function(tarvoline_programa nombre)
  cmake_parse_arguments(A "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${nombre} ${A_SOURCES})
  target_include_directories(${nombre} PRIVATE "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${nombre} PRIVATE ${A_LINK})
  if("${A_LINK}" MATCHES "CLI11::")
    target_precompile_headers(${nombre} REUSE_FROM tarvoline_cabeceras_programa)
  endif()
  if(NOT CMAKE_CURRENT_SOURCE_DIR MATCHES "^${PROJECT_SOURCE_DIR}/tests/")
    install(TARGETS ${nombre} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  endif()
endfunction()

# tarvoline_prueba(<name> SOURCES ... LINK ... [LABELS ...] [ENV ...] [NEEDS programs]): a GoogleTest program whose
# cases CTest runs one by one. A program without a case fails the build (see cmake/descubrir).
function(tarvoline_prueba nombre)
  cmake_parse_arguments(A "" "TIMEOUT" "SOURCES;LINK;LABELS;ENV;NEEDS" ${ARGN})
  if(NOT A_TIMEOUT)
    set(A_TIMEOUT 120)
  endif()
  add_executable(${nombre} ${A_SOURCES})
  target_include_directories(${nombre} PRIVATE "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests")
  target_compile_definitions(${nombre} PRIVATE
    TARVOLINE_BIN="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}" TARVOLINE_PROGRAMA="${TARVOLINE_PROGRAMA}")
  target_link_libraries(${nombre} PRIVATE ${A_LINK} GTest::gtest_main GTest::gmock)
  target_compile_options(${nombre} PRIVATE ${TARVOLINE_OPCIONES_PRUEBA})
  if(NOT "${A_LINK}" MATCHES "Qt6::")  # the toolkit's flags fit no header compiled without them
    target_precompile_headers(${nombre} REUSE_FROM tarvoline_cabeceras_prueba)
  endif()
  set_target_properties(${nombre} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  if(A_NEEDS)
    add_dependencies(${nombre} ${A_NEEDS})
  endif()
  set(propiedades TIMEOUT ${A_TIMEOUT})
  if(A_LABELS)
    list(APPEND propiedades LABELS "${A_LABELS}")
  endif()
  if(A_ENV)
    list(APPEND propiedades ENVIRONMENT "${A_ENV}")
  endif()
  gtest_discover_tests(${nombre} DISCOVERY_TIMEOUT 60 PROPERTIES ${propiedades})
endfunction()
