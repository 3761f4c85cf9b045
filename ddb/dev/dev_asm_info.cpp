// DEV_ASM_INFO: the assembler's die and routing descriptions through the assembler-database
// module.
#include "dev_asm_info.h"

#include <dlfcn.h>

#include "dev_basic_info.h"
#include "dev_path.h"
#include "host/cfg.h"
#include "host/msg.h"
#include "host/thr_drl.h"
#include "host/tables/dev_device_enum.h"
#include "host/tables/dev_family_enum.h"

namespace {

// The module's six functions, each looked up when needed.
typedef ASMDB_DIE* (*READ_DIE)(const char*);
typedef ASMDB_DIRT* (*READ_DIRT)(const char*);
typedef int (*WRITE_DIE)(const ASMDB_DIE*, const char*, int);
typedef int (*WRITE_DIRT)(const ASMDB_DIRT*, const char*, int);
typedef void (*DELETE_DIE)(ASMDB_DIE*);
typedef void (*DELETE_DIRT)(ASMDB_DIRT*);

// The installed module: libvelcora_asmdb.so beside this library.
std::string installed_module() {
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void*>(&installed_module), &info) || !info.dli_fname) return "libvelcora_asmdb.so";
    return FIO_PATH(info.dli_fname).directory() + "/libvelcora_asmdb.so";
}

// The module (reported, and null, when it cannot be loaded). The host keeps a loaded module
// loaded: a second load of the same module is cheap.
THR_DRL_HANDLE module() {
    const std::string path = cfg_get_value("dev_asmdb_module", installed_module().c_str());
    THR_DRL_HANDLE handle = thr_drl_load(path.c_str());
    if (!handle) DEV_INTERNAL_ERROR(thr_drl_get_error());
    return handle;
}

// A function of the module (reported, and null, when the module lacks it).
template <typename FUNCTION>
FUNCTION function(THR_DRL_HANDLE handle, const char* name) {
    if (!handle) return nullptr;
    void* f = thr_drl_find_function(handle, name);
    if (!f) DEV_INTERNAL_ERROR(thr_drl_get_error());
    return reinterpret_cast<FUNCTION>(f);
}

}  // namespace

DEV_ASM_INFO::DEV_ASM_INFO() : m_asmdb_die(nullptr), m_asmdb_dirt(nullptr) {}

DEV_ASM_INFO::~DEV_ASM_INFO() { purge_data(); }

void DEV_ASM_INFO::set_asmdb_die(ASMDB_DIE* die) {
    DEV_ASSERT_TEXT(m_asmdb_die == NULL, "m_asmdb_die == NULL");
    m_asmdb_die = die;
}

void DEV_ASM_INFO::set_asmdb_dirt(ASMDB_DIRT* dirt) {
    DEV_ASSERT_TEXT(m_asmdb_dirt == NULL, "m_asmdb_dirt == NULL");
    m_asmdb_dirt = dirt;
}

bool DEV_ASM_INFO::get_die_file_path(const DEV_BASIC_INFO* basic_info, FIO_PATH* path) {
    if (!basic_info || !basic_info->get_body() || !path) return false;
    std::string name;
    if (!basic_info->get_string_data(DEV_BASIC_INFO_STRING_DIE_FILE_NAME, &name) &&
        !basic_info->get_string_data(DEV_BASIC_INFO_STRING_DATA_FILE_STEM, &name))
        name = dstr_get_debug_string(basic_info->get_device_enum());
    DEV_PATH::build_device_file_path(basic_info->get_family_enum(), name, path, true);
    return true;
}

bool DEV_ASM_INFO::load_data_from_pdb(DEV_BASIC_INFO* basic_info) {
    // Both reported when both are held; what is held stays.
    const bool die_free = DEV_ASSERT_TEXT(m_asmdb_die == NULL, "m_asmdb_die == NULL");
    const bool dirt_free = DEV_ASSERT_TEXT(m_asmdb_dirt == NULL, "m_asmdb_dirt == NULL");
    FIO_PATH path;
    if (!die_free || !dirt_free || !DEV_ASSERT_TEXT(get_die_file_path(basic_info, &path), "basic_info != NULL"))
        return false;
    THR_DRL_HANDLE handle = module();
    if (READ_DIE read_die = function<READ_DIE>(handle, "asmdb_pdb_read_die"))
        m_asmdb_die = read_die(path.full_path().c_str());
    if (!basic_info->is_valid_string_enum(DEV_BASIC_INFO_STRING_ROUTING_DESCRIPTION_FILE)) return true;
    if (READ_DIRT read_dirt = function<READ_DIRT>(handle, "asmdb_pdb_read_dirt"))
        m_asmdb_dirt = read_dirt(path.full_path().c_str());
    return m_asmdb_dirt != nullptr;
}

bool DEV_ASM_INFO::write_data_to_pdb(const FIO_PATH& path) {
    const int level = cfg_get_int_value("ddb_compression_level", 9);
    DEV_DEBUG("Compression Level: %d", level);
    if (!m_asmdb_die && !m_asmdb_dirt) return true;
    THR_DRL_HANDLE handle = module();
    bool ok = true;
    if (m_asmdb_die) {
        WRITE_DIE write_die = function<WRITE_DIE>(handle, "asmdb_pdb_write_die");
        ok = write_die && write_die(m_asmdb_die, path.full_path().c_str(), level) != 0;
    }
    if (m_asmdb_dirt) {
        WRITE_DIRT write_dirt = function<WRITE_DIRT>(handle, "asmdb_pdb_write_dirt");
        ok = write_dirt && write_dirt(m_asmdb_dirt, path.full_path().c_str(), level) != 0 && ok;
    }
    return ok;
}

void DEV_ASM_INFO::purge_data() {
    if (!m_asmdb_die && !m_asmdb_dirt) return;
    THR_DRL_HANDLE handle = module();
    if (m_asmdb_die)
        if (DELETE_DIE delete_die = function<DELETE_DIE>(handle, "asmdb_delete_die")) delete_die(m_asmdb_die);
    if (m_asmdb_dirt)
        if (DELETE_DIRT delete_dirt = function<DELETE_DIRT>(handle, "asmdb_delete_dirt")) delete_dirt(m_asmdb_dirt);
    m_asmdb_die = nullptr;
    m_asmdb_dirt = nullptr;
}
