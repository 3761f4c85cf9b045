# Tcl: both libraries are built against the Tcl stubs interface (USE_TCL_STUBS, static stub
# library, each with a stub table of its own), so that `load libvelcora_ddb.so Ddb` works in
# any tclsh of version 8.5 or newer; they never link the Tcl library itself. Test programs that create their own interpreters
# link the real Tcl library.
pkg_check_modules(VELCORA_TCL REQUIRED tcl)
find_library(VELCORA_TCL_STUB_LIBRARY NAMES tclstub8.6 tclstub HINTS ${VELCORA_TCL_LIBRARY_DIRS} REQUIRED)
find_library(VELCORA_TCL_LIBRARY NAMES tcl8.6 tcl HINTS ${VELCORA_TCL_LIBRARY_DIRS} REQUIRED)

foreach(library velcora_host velcora_ddb)
  target_compile_definitions(${library} PRIVATE USE_TCL_STUBS)
  target_include_directories(${library} SYSTEM PRIVATE ${VELCORA_TCL_INCLUDE_DIRS})
  target_link_libraries(${library} PRIVATE ${VELCORA_TCL_STUB_LIBRARY})
endforeach()

if(TARGET test_tcl)
  target_include_directories(test_tcl SYSTEM PRIVATE ${VELCORA_TCL_INCLUDE_DIRS})
  target_link_libraries(test_tcl PRIVATE ${VELCORA_TCL_LIBRARY})
endif()

# The package index: beside the library in the build tree (TCLLIBPATH=<build>/ddb), and
# installed two levels below the library, in a directory Debian's tclsh searches for
# prefix /usr/local (<prefix>/lib/tcltk; other prefixes name it in TCLLIBPATH).
configure_file("${PROJECT_SOURCE_DIR}/tcl/pkgIndex.tcl" "${PROJECT_BINARY_DIR}/ddb/pkgIndex.tcl" COPYONLY)
install(FILES "${PROJECT_SOURCE_DIR}/tcl/pkgIndex.tcl" DESTINATION "${CMAKE_INSTALL_LIBDIR}/tcltk/velcora_ddb")

# Tcl tests (tests/tcl/*.test, tcltest through all.tcl) against the built package, in both
# builds. A sanitizer-built library needs the sanitizer runtime loaded first into tclsh.
if(VELCORA_BUILD_TESTS)
  find_program(VELCORA_TCLSH NAMES tclsh tclsh8.6 REQUIRED)
  add_executable(tcl_expectations "${PROJECT_SOURCE_DIR}/tests/tcl/tcl_expectations.cpp")
  target_link_libraries(tcl_expectations PRIVATE velcora_ddb)
  set(velcora_tcl_test_env
    "TCLLIBPATH=${PROJECT_BINARY_DIR}/ddb"
    "VELCORA_ROOTDIR=${VELCORA_BUNDLED_ROOT}"
    "VELCORA_SOURCE_DIR=${PROJECT_SOURCE_DIR}"
    "VELCORA_BINARY_DIR=${PROJECT_BINARY_DIR}"
    "VELCORA_TCL_EXPECTATIONS=$<TARGET_FILE:tcl_expectations>")
  if(VELCORA_SANITIZE)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libasan.so
                    OUTPUT_VARIABLE velcora_asan_runtime OUTPUT_STRIP_TRAILING_WHITESPACE)
    # Leaks are not checked: tclsh itself keeps memory until exit by design.
    list(APPEND velcora_tcl_test_env "LD_PRELOAD=${velcora_asan_runtime}"
         "ASAN_OPTIONS=detect_leaks=0:abort_on_error=1" "VELCORA_SANITIZE=1")
  endif()
  add_test(NAME tcl_package COMMAND ${VELCORA_TCLSH} "${PROJECT_SOURCE_DIR}/tests/tcl/all.tcl")
  set_tests_properties(tcl_package PROPERTIES ENVIRONMENT "${velcora_tcl_test_env}")
endif()

# The package's benchmark runs an interpreter in its own process too.
if(TARGET bench_tcl_package)
  target_include_directories(bench_tcl_package SYSTEM PRIVATE ${VELCORA_TCL_INCLUDE_DIRS})
  target_link_libraries(bench_tcl_package PRIVATE ${VELCORA_TCL_LIBRARY})
endif()
