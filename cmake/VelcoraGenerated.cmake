# Outputs committed from generators must match what their generator writes today, so
# that a hand edit of a generated file fails the tests; the basic info generated at build
# time must read back under the HDR grammar and the .def tables. Normal builds only.
find_package(Python3 COMPONENTS Interpreter)
if(Python3_Interpreter_FOUND AND NOT VELCORA_SANITIZE)
  add_test(NAME product_line_current
    COMMAND Python3::Interpreter "${PROJECT_SOURCE_DIR}/tools/gen_product_line.py" --check
            --root "${PROJECT_SOURCE_DIR}")
  add_test(NAME bundled_device_files_valid
    COMMAND Python3::Interpreter "${PROJECT_SOURCE_DIR}/tools/check_device_files.py"
            --root "${VELCORA_BUNDLED_ROOT}" --staging "${VELCORA_DEVICE_STAGING}" --source "${PROJECT_SOURCE_DIR}")
endif()
