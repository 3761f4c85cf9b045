# Tcl: the library is built against the Tcl stubs interface (USE_TCL_STUBS, static stub
# library), so that `load libvelcora_ddb.so Ddb` works in any tclsh of version 8.5 or newer;
# it never links the Tcl library itself. Test programs that create their own interpreters
# link the real Tcl library.
pkg_check_modules(VELCORA_TCL REQUIRED tcl)
find_library(VELCORA_TCL_STUB_LIBRARY NAMES tclstub8.6 tclstub HINTS ${VELCORA_TCL_LIBRARY_DIRS} REQUIRED)
find_library(VELCORA_TCL_LIBRARY NAMES tcl8.6 tcl HINTS ${VELCORA_TCL_LIBRARY_DIRS} REQUIRED)

target_compile_definitions(velcora_ddb PRIVATE USE_TCL_STUBS)
target_include_directories(velcora_ddb SYSTEM PRIVATE ${VELCORA_TCL_INCLUDE_DIRS})
target_link_libraries(velcora_ddb PRIVATE ${VELCORA_TCL_STUB_LIBRARY})

foreach(test_target test_tcl_frame)
  if(TARGET ${test_target})
    target_include_directories(${test_target} SYSTEM PRIVATE ${VELCORA_TCL_INCLUDE_DIRS})
    target_link_libraries(${test_target} PRIVATE ${VELCORA_TCL_LIBRARY})
  endif()
endforeach()
