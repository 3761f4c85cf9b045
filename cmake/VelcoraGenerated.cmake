# Outputs committed from generators must match what their generator writes today, so
# that a hand edit of a generated file fails the tests. Normal builds only.
find_package(Python3 COMPONENTS Interpreter)
if(Python3_Interpreter_FOUND AND NOT VELCORA_SANITIZE)
  add_test(NAME product_line_current
    COMMAND Python3::Interpreter "${PROJECT_SOURCE_DIR}/tools/gen_product_line.py" --check
            --root "${PROJECT_SOURCE_DIR}")
endif()
