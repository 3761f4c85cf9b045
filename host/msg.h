// Host message channels: internal-error reports and the debug channel.
//
// The library reports every broken precondition through MSG_INTERNAL_ERROR_report and
// always continues afterwards; parse notes and timings go to the debug channel. The
// default sink writes to stderr (debug output only when debugging is switched on).
// MSG_CAPTURE records every report for tests and tools.
#ifndef VELCORA_HOST_MSG_H
#define VELCORA_HOST_MSG_H

#include "host/host_export.h"

#include <cstdarg>
#include <string>
#include <vector>

enum MSG_KIND { MSG_KIND_INTERNAL_ERROR = 1, MSG_KIND_DEBUG = 2 };

struct HOST_EXPORT MSG_RECORD {
    MSG_KIND kind;
    std::string module;
    std::string text;      // exactly as reported (debug notes: formatted)
    std::string source;    // reporting source file (internal errors only)
    int line = 0;          // reporting source line (internal errors only)
};

// Reports a broken precondition. `text` is the failed condition as written or a sentence.
HOST_EXPORT void MSG_INTERNAL_ERROR_report(const char* text, const char* module, const char* source_file,
                               int line);
inline void MSG_INTERNAL_ERROR_report(const std::string& text, const char* module,
                                      const char* source_file, int line) {
    MSG_INTERNAL_ERROR_report(text.c_str(), module, source_file, line);
}

// Writes a printf-style note on the debug channel of `module`.
HOST_EXPORT void msg_local_vdebug(const char* module, const char* format, ...)
    __attribute__((format(printf, 2, 3)));
HOST_EXPORT void msg_local_vdebug_va(const char* module, const char* format, va_list args);

// True when debug notes are printed: VELCORA_DEBUG=1 in the environment or the
// configuration switch "dev_debug" on. Captures see debug notes regardless.
HOST_EXPORT bool msg_is_debug_on();

// Number of internal errors reported since the process started.
HOST_EXPORT unsigned long msg_internal_error_count();

// The report form of a source file: the path as the compiler gives it, without extension.
// The build maps the source tree's root away (-ffile-prefix-map), so __FILE__ of the
// library's sources reads "ddb/dev/dev_path.cpp" and reports name "ddb/dev/dev_path".
HOST_EXPORT std::string msg_source_name(const char* file);

// Records every report while alive. Captures nest; the innermost one receives reports.
// With `echo` false (the default) captured reports are not printed.
class HOST_EXPORT MSG_CAPTURE {
public:
    explicit MSG_CAPTURE(bool echo = false);
    ~MSG_CAPTURE();
    MSG_CAPTURE(const MSG_CAPTURE&) = delete;
    MSG_CAPTURE& operator=(const MSG_CAPTURE&) = delete;

    const std::vector<MSG_RECORD>& records() const { return m_records; }
    std::vector<std::string> texts(MSG_KIND kind) const;
    std::vector<std::string> internal_errors() const { return texts(MSG_KIND_INTERNAL_ERROR); }
    std::vector<std::string> debug_notes() const { return texts(MSG_KIND_DEBUG); }
    bool has(MSG_KIND kind, const std::string& text) const;
    bool has_internal_error(const std::string& text) const {
        return has(MSG_KIND_INTERNAL_ERROR, text);
    }
    bool has_debug(const std::string& text) const { return has(MSG_KIND_DEBUG, text); }
    void clear() { m_records.clear(); }

    void add(MSG_RECORD record) { m_records.push_back(std::move(record)); }
    bool echo() const { return m_echo; }

private:
    std::vector<MSG_RECORD> m_records;
    MSG_CAPTURE* m_previous;
    bool m_echo;
};

// Library-side shorthands: module "DEV", the reporting source file and line.
#define DEV_INTERNAL_ERROR(text) \
    MSG_INTERNAL_ERROR_report((text), "DEV", msg_source_name(__FILE__).c_str(), __LINE__)
// Reports the condition as the source spells it when the condition fails; evaluates to the
// condition. For internal checks only: a reformatted or renamed condition changes the report.
#define DEV_ASSERT(cond) \
    ((cond) ? true : (DEV_INTERNAL_ERROR(#cond), false))
// Same, with the report text given explicitly: every report text that callers and users rely
// on (the library's documented precondition texts) is written out, independent of the source.
#define DEV_ASSERT_TEXT(cond, text) \
    ((cond) ? true : (DEV_INTERNAL_ERROR(text), false))
#define DEV_DEBUG(...) msg_local_vdebug("DEV", __VA_ARGS__)

#endif
