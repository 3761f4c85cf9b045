// DEV_FAMILY_INFO_WRITER: the ASCII dump of the catalogue store, family-info text that the
// reader reads back. Written over the store's public interface; the store's write members
// forward here.
#include "dev_archive_export.h"
#include "dev_family_info.h"
#include "dev_family_info_keys.h"
#include "dev_family_info_mgr_body.h"
#include "host/msg.h"

namespace {

// The key lines of one record: TAB, key, " = ", value, in alphabetical order of the keys.
template <typename DESC>
void write_key_lines(DEV_ARCHIVE* archive, const DESC& desc) {
    const DEV_FAMILY_INFO_KEY_TABLE<DESC>& table = dev_family_info_keys(static_cast<const DESC*>(nullptr));
    for (size_t i = table.keys.size(); i-- > 0;) {
        const DEV_FAMILY_INFO_KEY<DESC>& k = table.keys[i];
        switch (k.kind) {
        case DEV_FI_ENUM:
            if (k.get_int(desc) != 0)
                archive->sprintf("\t%s = %s\n", k.key, k.table().debug_string(k.get_int(desc)));
            break;
        case DEV_FI_INT:
            archive->sprintf("\t%s = %d\n", k.key, k.get_int(desc));
            break;
        case DEV_FI_STRING: {
            // Written whole: a value may hold a NUL byte, where "%s" would cut it short.
            const std::string& value = k.get_string(desc);
            if (value.empty()) break;
            archive->sprintf("\t%s = \"", k.key);
            archive->write(value.data(), value.size());
            archive->sprintf("\"\n");
            break;
        }
        case DEV_FI_TRAIT:
        case DEV_FI_LIST: {
            const DSTR_TABLE& names = k.table();
            if (k.kind == DEV_FI_LIST && k.get_string(desc).empty()) break;
            for (int v = names.invalid_value() + 1; v <= names.bound_value(); ++v) {
                const DSTR_ENTRY* e = names.find(v);
                if (!e || !e->debug) continue;
                if (k.kind == DEV_FI_TRAIT ? k.test_bit(desc, v)
                                           : dev_list_string_contains(k.get_string(desc), e->debug))
                    archive->sprintf(k.kind == DEV_FI_TRAIT ? "\t%s = %s\n" : "\t%s = \"%s\"\n", k.key, e->debug);
            }
            break;
        }
        }
    }
}

// The key lines of a part, then its resource list.
void write_part_lines(DEV_ARCHIVE* archive, const DEV_PART_DESC& desc) {
    write_key_lines(archive, desc);
    const std::vector<int32_t>& v = desc.get_dev_resources();
    archive->sprintf("\tDEV_RESOURCES = {\n");
    if (DEV_ASSERT_TEXT(v.size() >= DEV_RESOURCE_END, "v.size() >= DEV_RESOURCE_END")) {
        for (int r = 0; r < DEV_RESOURCE_END; ++r)
            if (v[r] >= 0)
                archive->sprintf("%s\"%s\" = %d\n", "\t\t", dstr_get_user_string(static_cast<DEV_RESOURCE_ENUM>(r)), v[r]);
    }
    archive->sprintf("\t}\n");
}

class DEV_FAMILY_INFO_WRITER {
public:
    // A failed write leaves the file and the failed step in `write_error`.
    DEV_FAMILY_INFO_WRITER(const DEV_FAMILY_INFO_MGR_BODY& store, std::string& write_error)
        : m_store(store), m_write_error(write_error) {}
    bool write(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type, const FIO_PATH& path, int compression_level);

private:
    const DEV_FAMILY_INFO_MGR_BODY& m_store;
    std::string& m_write_error;
};

bool DEV_FAMILY_INFO_WRITER::write(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type, const FIO_PATH& path,
                                   int compression_level) {
    if (!DEV_ASSERT_TEXT((family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX), "(family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX)")) return false;
    m_write_error.clear();
    DEV_ARCHIVE archive(compression_level);
    if (!archive.open(path, DEV_ARCHIVE::WRITE) || !archive.is_open()) {
        m_write_error = path.full_path() + ": " + archive.write_error();
        DEV_DEBUG("Failed opening %s", path.full_path().c_str());
        archive.close(true);
        return false;
    }
    const char* rule = "#######################################################\n";
    archive.sprintf("%s", rule);
    archive.sprintf("### Family/device/part info - ASCII dump by DEV\n");
    archive.sprintf("%s", rule);

    DEV_FAMILY_INFO storage;
    m_store.prepare_output(family, type, &storage);
    if (!storage.m_family_data.empty()) {
        archive.sprintf("\n########### families ############\n");
        for (DEV_FAMILY_DESC* d : storage.m_family_data) {
            archive.sprintf("family\t%s\n", dstr_get_debug_string(d->get_family()));
            archive.sprintf("######\t(User name - %s)\n", dstr_get_user_string(d->get_family()));
            archive.sprintf("\tDEVICES_FOLDER = %s\n", m_store.get_devices_folder(d->get_family()).c_str());
            write_key_lines(&archive, *d);
            archive.sprintf("end\n\n");
        }
    }
    if (!storage.m_device_data.empty()) {
        archive.sprintf("\n########### devices ############\n");
        for (DEV_DEVICE_DESC* d : storage.m_device_data) {
            archive.sprintf("device\t%s\n", dstr_get_debug_string(d->get_device()));
            archive.sprintf("######\t(User name - %s)\n", dstr_get_user_string(d->get_device()));
            write_key_lines(&archive, *d);
            archive.sprintf("end\n\n");
        }
    }
    if (!storage.m_part_data.empty()) {
        archive.sprintf("\n########### parts ############\n");
        for (DEV_PART_DESC* d : storage.m_part_data) {
            archive.sprintf("part\t%s\n", dstr_get_debug_string(d->get_part()));
            archive.sprintf("####\t(User name - %s)\n", dstr_get_user_string(d->get_part()));
            write_part_lines(&archive, *d);
            archive.sprintf("end\n\n");
        }
    }
    if (storage.m_family_data.empty() && storage.m_device_data.empty() && storage.m_part_data.empty())
        archive.sprintf("\n### (none of the requested data was loaded - nothing to write) ###\n");
    // The dump replaces the previous file only when complete.
    archive.close(true);
    if (!archive.write_ok()) {
        m_write_error = path.full_path() + ": " + archive.write_error();
        DEV_DEBUG("Failed writing %s", m_write_error.c_str());
        return false;
    }
    DEV_DEBUG("Wrote ASCII file %s", path.full_path().c_str());
    return true;
}

}  // namespace

// ---------------------------------------------------------------------------------------
// The store's dump members

void DEV_FAMILY_INFO_MGR_BODY::write_family_desc(DEV_ARCHIVE* archive, DEV_FAMILY_DESC* desc) {
    write_key_lines(archive, *desc);
}

void DEV_FAMILY_INFO_MGR_BODY::write_device_desc(DEV_ARCHIVE* archive, DEV_DEVICE_DESC* desc) {
    write_key_lines(archive, *desc);
}

void DEV_FAMILY_INFO_MGR_BODY::write_part_desc(DEV_ARCHIVE* archive, DEV_PART_DESC* desc) {
    write_part_lines(archive, *desc);
}

bool DEV_FAMILY_INFO_MGR_BODY::write_family_data(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                                                 const FIO_PATH& path, int compression_level) {
    return DEV_FAMILY_INFO_WRITER(*this, m_write_error).write(family, type, path, compression_level);
}
