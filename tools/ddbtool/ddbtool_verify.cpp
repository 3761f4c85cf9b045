// Verify command: `verify [--family F]...` opens every installed device as the library does,
// with every aspect, from whichever form of each file is installed, and every installed part's
// part-level data, and reports every problem with the file it concerns; per family the
// devices, parts and files checked and the errors; then a total.
//
// What counts as a problem: every internal error the library reports while opening (with the
// file whose "Loading ... file:" note came last; the text readers' located diagnostics with
// their own file and line), an installed file whose aspect did not load, a part of a device
// with data whose part info is missing, and a device of a family with the new database whose
// assembler data are missing. A kind whose files are per part (its locate answers false
// with no path for a device alone) is checked for every part: the part info through its
// loader, the others by reading the part's file with the kind's reader.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "ddbtool.h"
#include "ddbtool_device_kind.h"
#include "dev_asm_info.h"
#include "dev_basic_info.h"
#include "dev_device_factory.h"
#include "dev_family_info_mgr_body.h"
#include "dev_part_info.h"
#include "dev_path.h"
#include "dev_text_diagnostics.h"
#include "host/dstr.h"
#include "host/msg.h"

namespace {

const char VERIFY_USAGE[] =
    "usage: ddbtool verify [--family FAMILY]...\n\n"
    "Opens every installed device (of the families named, else of every family) with every\n"
    "aspect as the library does, from whichever form of each file is installed, and every\n"
    "installed part's part-level data (its part info, and the other kinds below that are kept\n"
    "per part). Prints every problem as \"FILE:LINE: error: MESSAGE\" (\"FILE: error: ...\"\n"
    "when no line applies), then per family \"FAMILY: D devices, P parts, F files checked, E\n"
    "errors\", then the total. A file that is installed but does not load, a missing part info\n"
    "of a device with data, and missing assembler data of a family with the new database are\n"
    "errors too. On a terminal a progress line names the device being checked. The exit\n"
    "status is 1 when any error was found.\n";

struct COUNTS {
    int devices = 0, parts = 0, files = 0, errors = 0;
    void add(const COUNTS& o) {
        devices += o.devices;
        parts += o.parts;
        files += o.files;
        errors += o.errors;
    }
};

class VERIFIER {
public:
    explicit VERIFIER(bool progress) : m_progress(progress) {}
    COUNTS verify_family(DEV_FAMILY_ENUM family, const std::vector<DEV_DEVICE_ENUM>& devices);
    void clear_progress();

private:
    void verify_device(DEV_DEVICE_ENUM device, const std::vector<DEV_PART_ENUM>& parts, bool new_database);
    void verify_part(const DEV_DEVICE& device, DEV_DEVICE_ENUM device_enum, DEV_PART_ENUM part, bool first);
    void error(const std::string& file, int line, const std::string& message);
    // Runs `work` under a capture of reports and diagnostics and reports what it found:
    // internal errors are put on the file of the last "Loading ... file:" note (else on
    // `file`).
    void run(const std::string& file, const std::function<void()>& work);
    // The file once: counted the first time it is seen.
    void count_file(const std::string& file);

    bool m_progress;
    COUNTS m_counts;
    std::set<std::string> m_files;
    std::vector<std::string> m_notes;  // of the last run
};

void VERIFIER::clear_progress() {
    if (m_progress) std::fprintf(stderr, "\r%-79s\r", "");
}

void VERIFIER::error(const std::string& file, int line, const std::string& message) {
    clear_progress();
    if (line > 0)
        std::printf("%s:%d: error: %s\n", file.c_str(), line, message.c_str());
    else
        std::printf("%s: error: %s\n", file.c_str(), message.c_str());
    ++m_counts.errors;
}

void VERIFIER::count_file(const std::string& file) {
    if (!file.empty() && m_files.insert(file).second) ++m_counts.files;
}

void VERIFIER::run(const std::string& file, const std::function<void()>& work) {
    DEV_TEXT_DIAGNOSTICS diagnostics;
    MSG_CAPTURE capture;
    work();
    std::vector<std::string> covered;
    for (const DEV_TEXT_DIAGNOSTIC& d : diagnostics.diagnostics()) {
        if (d.kind != DEV_TEXT_DIAGNOSTIC::ERROR) continue;
        error(d.file.empty() ? file : d.file, d.line, d.message);
        covered.insert(covered.end(), d.reports.begin(), d.reports.end());
    }
    static const std::string LOADING = "Loading ";
    std::string current = file;
    m_notes.clear();
    for (const MSG_RECORD& r : capture.records()) {
        const size_t at = r.text.find(" file: ");
        if (r.kind == MSG_KIND_DEBUG && r.text.rfind(LOADING, 0) == 0 && at != std::string::npos) {
            current = r.text.substr(at + 7);
            continue;
        }
        if (r.kind == MSG_KIND_DEBUG) {
            m_notes.push_back(r.text);
            continue;
        }
        auto used = std::find(covered.begin(), covered.end(), r.text);
        if (used != covered.end())
            covered.erase(used);
        else
            error(current, 0, r.text);
    }
}

// Why a file did not load: the notes of the last run that name it.
std::string reason(const std::vector<std::string>& notes, const std::string& file) {
    for (const std::string& n : notes)
        if (n.rfind(file + ": ", 0) == 0) return " (" + n.substr(file.size() + 2) + ")";
    return std::string();
}

bool is_per_part(const DDBTOOL_DEVICE_KIND& kind, DEV_DEVICE_ENUM device) {
    FIO_PATH path;
    return !kind.locate(device, DEV_PART_INVALID, &path) && path.full_path().empty();
}

void VERIFIER::verify_part(const DEV_DEVICE& device, DEV_DEVICE_ENUM device_enum, DEV_PART_ENUM part, bool first) {
    ++m_counts.parts;
    const bool has_data = device.get_basic_info() != nullptr;
    // The first part's data were opened with the device.
    std::unique_ptr<DEV_PART_INFO> loaded;
    const DEV_PART_INFO* part_info = device.get_part_info();
    if (!first) {
        loaded.reset(new DEV_PART_INFO);
        run(dstr_get_debug_string(part), [&] { loaded->load_data(const_cast<DEV_DEVICE*>(&device), part); });
        part_info = loaded->get_body() ? loaded.get() : nullptr;
    }
    for (const DDBTOOL_DEVICE_KIND* kind : ddbtool_device_kinds()) {
        if (!is_per_part(*kind, device_enum)) continue;
        FIO_PATH path;
        const bool found = kind->locate(device_enum, part, &path);
        if (found) count_file(path.full_path());
        if (kind == &ddbtool_kind_part_info()) {
            if (!part_info && (found || has_data))
                error(path.full_path(), 0,
                      std::string("part info of ") + dstr_get_debug_string(part) +
                          (found ? " could not be read" + reason(m_notes, path.full_path()) : " not installed"));
        } else if (found && !first) {
            bool read = false;
            run(path.full_path(), [&] { read = kind->create()->read(path); });
            if (!read) error(path.full_path(), 0, std::string("could not be read as ") + kind->description());
        } else if (found && kind->describe(device).empty()) {
            error(path.full_path(), 0, std::string("could not be read as ") + kind->description());
        }
    }
}

void VERIFIER::verify_device(DEV_DEVICE_ENUM device, const std::vector<DEV_PART_ENUM>& parts, bool new_database) {
    ++m_counts.devices;
    FIO_PATH path;
    if (DEV_PATH::get_existing_device_file_path(device, "device", &path))
        count_file(path.full_path());
    else
        error(path.full_path(), 0, "the device file is not installed");
    // Opened for its first part, so that the part-level aspects come too.
    std::unique_ptr<DEV_DEVICE> opened;
    run(dstr_get_debug_string(device), [&] {
        opened.reset(parts.empty() ? DEV_DEVICE_FACTORY::create(device, DEV_DEVICE_FACTORY::ALL)
                                   : DEV_DEVICE_FACTORY::create_for_part(parts[0], DEV_DEVICE_FACTORY::ALL));
    });
    if (!opened) {
        error(dstr_get_debug_string(device), 0, "the device could not be opened");
        return;
    }
    for (const DDBTOOL_DEVICE_KIND* kind : ddbtool_device_kinds()) {
        if (is_per_part(*kind, device) || !kind->locate(device, DEV_PART_INVALID, &path)) continue;
        count_file(path.full_path());
        if (kind->describe(*opened).empty())
            error(path.full_path(), 0,
                  std::string("could not be read as ") + kind->description() + reason(m_notes, path.full_path()));
    }
    FIO_PATH die;
    if (DEV_ASM_INFO::get_die_file_path(opened->get_basic_info(), &die) && FIO_FILE_SYSTEM::exists(die)) {
        count_file(die.full_path());
        const DEV_ASM_INFO* info = opened->get_asm_info();
        if (!info || !info->get_asmdb_die()) error(die.full_path(), 0, "the assembler data could not be read");
    } else if (new_database && opened->get_basic_info()) {
        error(die.full_path(), 0, "the assembler data are not installed");
    }
    for (size_t i = 0; i < parts.size(); ++i) verify_part(*opened, device, parts[i], i == 0);
}

COUNTS VERIFIER::verify_family(DEV_FAMILY_ENUM family, const std::vector<DEV_DEVICE_ENUM>& devices) {
    const DEV_FAMILY_INFO_MGR_BODY& catalogue = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
    const bool new_database = catalogue.find_desc_of(family)->has_trait(DEV_FAMILY_TRAIT_NEW_DDB_SUPPORT);
    m_counts = COUNTS();
    for (size_t i = 0; i < devices.size(); ++i) {
        if (m_progress)
            std::fprintf(stderr, "\r%-79s", (std::string(dstr_get_debug_string(family)) + ": device " +
                                             std::to_string(i + 1) + " of " + std::to_string(devices.size()) + ", " +
                                             dstr_get_debug_string(devices[i]))
                                                .c_str());
        std::vector<DEV_PART_ENUM> parts;
        for (int p = DEV_PART_INVALID + 1; p < DEV_PART_GENERIC; ++p) {
            const DEV_PART_DESC* record = catalogue.find_desc_of(DEV_PART_ENUM(p));
            if (record && record->get_device() == devices[i]) parts.push_back(DEV_PART_ENUM(p));
        }
        verify_device(devices[i], parts, new_database);
    }
    clear_progress();
    return m_counts;
}

void print_counts(const std::string& what, const COUNTS& c) {
    std::printf("%s: %d devices, %d parts, %d files checked, %d errors\n", what.c_str(), c.devices, c.parts, c.files,
                c.errors);
}

}  // namespace

int ddbtool_verify(const std::vector<std::string>& args) {
    std::vector<DEV_FAMILY_ENUM> wanted;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] != "--family" || i + 1 == args.size()) {
            ddbtool_error("verify", args[i] == "--family" ? "--family needs a value" : "unknown argument \"" + args[i] + "\"");
            return 2;
        }
        const DEV_FAMILY_ENUM family = dstr_get_dev_family_enum_by_string(args[++i]);
        if (family == DEV_FAMILY_INVALID) {
            ddbtool_error("verify", "\"" + args[i] + "\" names no family");
            return 2;
        }
        wanted.push_back(family);
    }
    const DEV_FAMILY_INFO_MGR_BODY& catalogue = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
    std::vector<std::vector<DEV_DEVICE_ENUM>> devices(DEV_FAMILY_GENERIC);
    for (int d = DEV_DEVICE_INVALID + 1; d < DEV_DEVICE_GENERIC; ++d) {
        const DEV_DEVICE_DESC* record = catalogue.find_desc_of(DEV_DEVICE_ENUM(d));
        if (record && record->get_family() > DEV_FAMILY_INVALID && record->get_family() < DEV_FAMILY_GENERIC)
            devices[record->get_family()].push_back(DEV_DEVICE_ENUM(d));
    }
    VERIFIER verifier(isatty(STDERR_FILENO));
    COUNTS total;
    int families = 0;
    for (int f = DEV_FAMILY_INVALID + 1; f < DEV_FAMILY_GENERIC; ++f) {
        const DEV_FAMILY_ENUM family = DEV_FAMILY_ENUM(f);
        const DEV_FAMILY_DESC* record = catalogue.find_desc_of(family);
        const bool named = std::find(wanted.begin(), wanted.end(), family) != wanted.end();
        if (!record || (!wanted.empty() && !named)) continue;
        if (record->has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED)) {
            if (named) ddbtool_error("verify", std::string(dstr_get_debug_string(family)) + " is not installed");
            continue;
        }
        const COUNTS counts = verifier.verify_family(family, devices[f]);
        print_counts(dstr_get_debug_string(family), counts);
        total.add(counts);
        ++families;
    }
    print_counts("total of " + std::to_string(families) + " families", total);
    return total.errors ? 1 : 0;
}

const DDBTOOL_COMMAND DDBTOOL_VERIFY = {"verify", "open every installed device and part and report every problem",
                                        VERIFY_USAGE, ddbtool_verify, ddbtool_print_device_kinds};
