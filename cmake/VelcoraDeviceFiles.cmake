# The per-device files of the bundled installation (included by data/CMakeLists.txt): for
# every device of an installed family its catalogue device file, and its HDR file where the
# family needs one, written by tools/gen_device_files.py from the text catalogue into
# <bundled root>/ddb/<folder>/ and installed with the rest of the data.
find_package(Python3 COMPONENTS Interpreter REQUIRED)

set(VELCORA_DEVICE_FILES_STAMP "${VELCORA_BUNDLED_ROOT}/ddb/.device_files")
add_custom_command(OUTPUT "${VELCORA_DEVICE_FILES_STAMP}"
  COMMAND Python3::Interpreter "${PROJECT_SOURCE_DIR}/tools/gen_device_files.py"
          --root "${VELCORA_BUNDLED_ROOT}" --source "${PROJECT_SOURCE_DIR}" --stamp "${VELCORA_DEVICE_FILES_STAMP}"
  DEPENDS "${PROJECT_SOURCE_DIR}/tools/gen_device_files.py"
          "${PROJECT_SOURCE_DIR}/data/h/dev_part_manager_auto.part"
          "${PROJECT_SOURCE_DIR}/host/tables/dev_family_folder.def"
          "${VELCORA_DATA_STAMP}"
  COMMENT "Writing the bundled device files")
add_custom_target(bundled_device_files DEPENDS "${VELCORA_DEVICE_FILES_STAMP}")
add_dependencies(bundled_data bundled_device_files)

install(DIRECTORY "${VELCORA_BUNDLED_ROOT}/ddb/" DESTINATION "${CMAKE_INSTALL_DATADIR}/velcora/ddb"
  FILES_MATCHING PATTERN "*.device" PATTERN "*.hdr")
