# The per-device files of the bundled installation (included by data/CMakeLists.txt), written
# by tools/gen_device_files.py from the text catalogue and the .def tables: for every device
# of an installed family its catalogue device file and, unless the device has no basic info,
# its basic info in the HDR text form, in <bundled root>/ddb/<folder>/.
#
# Families with the trait NEW_DDB_SUPPORT install their basic info compiled
# (ddb_<device>_hdr.ddb) and no text: their HDR texts go to VELCORA_HDR_STAGING, whose
# manifest the next step hands to `ddbtool device compile`. That step
# (tools/compile_staged_hdr.py) asks ddbtool whether it has the command; while it has not,
# it installs the staged texts as ddb_<device>.hdr so that the devices stay installed.
find_package(Python3 COMPONENTS Interpreter REQUIRED)

set(VELCORA_HDR_STAGING "${CMAKE_BINARY_DIR}/hdr_staging" CACHE INTERNAL
    "HDR texts of the families whose basic info is compiled to .ddb at build time")
file(GLOB VELCORA_DEVDATA_SOURCES CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tools/devdata/*.py")
file(GLOB VELCORA_TABLE_DEFS CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/host/tables/*.def")

set(VELCORA_DEVICE_FILES_STAMP "${VELCORA_BUNDLED_ROOT}/ddb/.device_files")
add_custom_command(OUTPUT "${VELCORA_DEVICE_FILES_STAMP}"
  COMMAND Python3::Interpreter "${PROJECT_SOURCE_DIR}/tools/gen_device_files.py"
          --root "${VELCORA_BUNDLED_ROOT}" --staging "${VELCORA_HDR_STAGING}"
          --source "${PROJECT_SOURCE_DIR}" --stamp "${VELCORA_DEVICE_FILES_STAMP}"
  DEPENDS "${PROJECT_SOURCE_DIR}/tools/gen_device_files.py" ${VELCORA_DEVDATA_SOURCES} ${VELCORA_TABLE_DEFS}
          "${PROJECT_SOURCE_DIR}/data/h/dev_part_manager_auto.part"
          "${VELCORA_DATA_STAMP}"
  COMMENT "Writing the bundled device files and basic info")

# Compiles each staged text to ddb_<device>_hdr.ddb in its family folder:
#   ddbtool device compile <staging>/<folder>/ddb_<device>.hdr <root>/ddb/<folder>/ddb_<device>_hdr.ddb
# (through a temporary file beside the target), once ddbtool has that command.
set(VELCORA_HDR_DDB_STAMP "${VELCORA_BUNDLED_ROOT}/ddb/.hdr_ddb")
add_custom_command(OUTPUT "${VELCORA_HDR_DDB_STAMP}"
  COMMAND Python3::Interpreter "${PROJECT_SOURCE_DIR}/tools/compile_staged_hdr.py"
          --manifest "${VELCORA_HDR_STAGING}/hdr_manifest.txt" --ddbtool $<TARGET_FILE:ddbtool>
          --stamp "${VELCORA_HDR_DDB_STAMP}"
  DEPENDS "${VELCORA_DEVICE_FILES_STAMP}" ddbtool "${PROJECT_SOURCE_DIR}/tools/compile_staged_hdr.py"
  COMMENT "Installing the staged basic info (compiled to .ddb when ddbtool can)")
add_custom_target(bundled_device_files DEPENDS "${VELCORA_DEVICE_FILES_STAMP}" "${VELCORA_HDR_DDB_STAMP}")
add_dependencies(bundled_data bundled_device_files)

# Installed: the device files, the basic info in the form each family uses (text, or .ddb
# once compiled); not the staging folder nor the build's stamps.
install(DIRECTORY "${VELCORA_BUNDLED_ROOT}/ddb/" DESTINATION "${CMAKE_INSTALL_DATADIR}/velcora/ddb"
  FILES_MATCHING PATTERN "*.device" PATTERN "ddb_*.hdr" PATTERN "ddb_*_hdr.ddb")
