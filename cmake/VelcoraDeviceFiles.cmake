# The per-device files of the bundled installation (included by data/CMakeLists.txt), written
# by tools/gen_device_files.py from the text catalogue and the .def tables, in
# <bundled root>/ddb/<folder>/: for every device of an installed family its catalogue device
# file and, unless the device has no basic info, its data files: basic info (.hdr), pads
# (.pad), routing switches (.rsi), package pins (.pkg, per package) and part info
# (.part_info, per part), each kind for the families whose traits say they have it (file
# names: tools/devdata/files.py).
#
# Families with the trait NEW_DDB_SUPPORT install their data compiled (<base>_<kind>.ddb) and
# no text: their texts go to VELCORA_DEVICE_STAGING, whose manifest (device_manifest.txt, one
# "TEXT<tab>TARGET" line a file) the next step hands to `ddbtool device compile TEXT TARGET`.
# That step (tools/compile_staged_device_files.py) asks ddbtool which kinds the command
# takes; the texts of the kinds it does not take yet are installed as <base>.<kind>, so that
# the devices stay installed.
find_package(Python3 COMPONENTS Interpreter REQUIRED)

set(VELCORA_DEVICE_STAGING "${CMAKE_BINARY_DIR}/device_staging" CACHE INTERNAL
    "Device-data texts of the families whose data is compiled to .ddb at build time")
# The name the test registration (cmake/VelcoraGenerated.cmake) knows the staging folder by.
file(GLOB VELCORA_DEVDATA_SOURCES CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tools/devdata/*.py")
file(GLOB VELCORA_TABLE_DEFS CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/host/tables/*.def")

set(VELCORA_DEVICE_FILES_STAMP "${VELCORA_BUNDLED_ROOT}/ddb/.device_files")
add_custom_command(OUTPUT "${VELCORA_DEVICE_FILES_STAMP}"
  COMMAND Python3::Interpreter "${PROJECT_SOURCE_DIR}/tools/gen_device_files.py"
          --root "${VELCORA_BUNDLED_ROOT}" --staging "${VELCORA_DEVICE_STAGING}"
          --source "${PROJECT_SOURCE_DIR}" --stamp "${VELCORA_DEVICE_FILES_STAMP}"
  DEPENDS "${PROJECT_SOURCE_DIR}/tools/gen_device_files.py" ${VELCORA_DEVDATA_SOURCES} ${VELCORA_TABLE_DEFS}
          "${PROJECT_SOURCE_DIR}/data/h/dev_part_manager_auto.part"
          "${VELCORA_DATA_STAMP}"
  COMMENT "Writing the bundled device files and their data")

# Compiles each staged text to <base>_<kind>.ddb in its family folder, at compression level 6
# (level 9 costs five times the time for 15% less):
#   ddbtool device compile --level 6 <staging>/<folder>/<base>.<kind> <root>/ddb/<folder>/<base>_<kind>.ddb
# (through a temporary file beside the target), for the kinds that ddbtool takes. ddbtool
# runs on the bundled installation, whose catalogue tells it the family of a device (the PAD
# reader needs it).
set(VELCORA_DEVICE_DDB_STAMP "${VELCORA_BUNDLED_ROOT}/ddb/.device_ddb")
add_custom_command(OUTPUT "${VELCORA_DEVICE_DDB_STAMP}"
  COMMAND "${CMAKE_COMMAND}" -E env "VELCORA_ROOTDIR=${VELCORA_BUNDLED_ROOT}"
          "${Python3_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/tools/compile_staged_device_files.py"
          --manifest "${VELCORA_DEVICE_STAGING}/device_manifest.txt" --ddbtool $<TARGET_FILE:ddbtool>
          --level 6 --stamp "${VELCORA_DEVICE_DDB_STAMP}"
  DEPENDS "${VELCORA_DEVICE_FILES_STAMP}" ddbtool "${PROJECT_SOURCE_DIR}/tools/compile_staged_device_files.py"
  COMMENT "Installing the staged device data (compiled to .ddb for the kinds ddbtool takes)")
# The assembler data of the families with the new database, written by the assembler
# database module from the installed basic info and routing switches: ddb_<die>_die.ddb and
# ddb_<die>_dirt.ddb, once per die.
set(VELCORA_ASMDB_STAMP "${VELCORA_BUNDLED_ROOT}/ddb/.asmdb")
add_custom_command(OUTPUT "${VELCORA_ASMDB_STAMP}"
  COMMAND ${CMAKE_COMMAND} -E env "VELCORA_ROOTDIR=${VELCORA_BUNDLED_ROOT}"
          $<TARGET_FILE:asmdb_write> --stamp "${VELCORA_ASMDB_STAMP}"
  DEPENDS "${VELCORA_DEVICE_DDB_STAMP}" asmdb_write velcora_asmdb
  COMMENT "Writing the assembler data of the new-database families")
add_custom_target(bundled_device_files DEPENDS "${VELCORA_DEVICE_FILES_STAMP}" "${VELCORA_DEVICE_DDB_STAMP}"
  "${VELCORA_ASMDB_STAMP}")
add_dependencies(bundled_data bundled_device_files)

# Installed: the device files and the data in the form each family uses (text, or .ddb once
# compiled); not the staging folder nor the build's stamps.
set(VELCORA_DEVICE_FILE_PATTERNS PATTERN "*.device")
foreach(kind hdr pad pkg part_info rsi)
  list(APPEND VELCORA_DEVICE_FILE_PATTERNS PATTERN "ddb_*.${kind}" PATTERN "ddb_*_${kind}.ddb")
endforeach()
list(APPEND VELCORA_DEVICE_FILE_PATTERNS PATTERN "ddb_*_die.ddb" PATTERN "ddb_*_dirt.ddb")
install(DIRECTORY "${VELCORA_BUNDLED_ROOT}/ddb/" DESTINATION "${CMAKE_INSTALL_DATADIR}/velcora/ddb"
  FILES_MATCHING ${VELCORA_DEVICE_FILE_PATTERNS})
