// Default message sink: stderr, plus the innermost MSG_CAPTURE.
#include "host/msg.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "host/cfg.h"

namespace {

MSG_CAPTURE* g_capture = nullptr;
unsigned long g_internal_errors = 0;

bool env_debug_on() {
    static const bool on = [] {
        const char* v = std::getenv("VELCORA_DEBUG");
        return v != nullptr && std::strcmp(v, "1") == 0;
    }();
    return on;
}

}  // namespace

bool msg_is_debug_on() {
    static CFG_SWITCH dev_debug("dev_debug", false);
    return env_debug_on() || dev_debug.is_on();
}

unsigned long msg_internal_error_count() { return g_internal_errors; }

std::string msg_source_name(const char* file) {
    std::string name = file ? file : "";
    const size_t dot = name.rfind('.');
    const size_t slash = name.rfind('/');
    if (dot != std::string::npos && (slash == std::string::npos || dot > slash)) name.resize(dot);
    return name;
}

void MSG_INTERNAL_ERROR_report(const char* text, const char* module, const char* source_file,
                               int line) {
    ++g_internal_errors;
    MSG_RECORD r{MSG_KIND_INTERNAL_ERROR, module ? module : "", text ? text : "",
                 source_file ? source_file : "", line};
    if (g_capture) {
        bool echo = g_capture->echo();
        g_capture->add(r);
        if (!echo) return;
    }
    std::fprintf(stderr, "Internal Error: %s\nModule: %s\nFile: %s\nLine: %d\n", r.text.c_str(),
                 r.module.c_str(), r.source.c_str(), line);
    std::fflush(stderr);
}

void msg_local_vdebug_va(const char* module, const char* format, va_list args) {
    bool print = msg_is_debug_on();
    if (!g_capture && !print) return;
    char small[512];
    va_list copy;
    va_copy(copy, args);
    int n = std::vsnprintf(small, sizeof small, format, copy);
    va_end(copy);
    std::string text;
    if (n < 0) {
        text = format;
    } else if (static_cast<size_t>(n) < sizeof small) {
        text.assign(small, static_cast<size_t>(n));
    } else {
        text.resize(static_cast<size_t>(n) + 1);
        std::vsnprintf(&text[0], text.size(), format, args);
        text.resize(static_cast<size_t>(n));
    }
    if (g_capture) {
        print = print && g_capture->echo();
        g_capture->add(MSG_RECORD{MSG_KIND_DEBUG, module ? module : "", text, "", 0});
    }
    if (print) {
        std::fprintf(stderr, "Debug (%s): %s\n", module ? module : "", text.c_str());
        std::fflush(stderr);
    }
}

void msg_local_vdebug(const char* module, const char* format, ...) {
    va_list args;
    va_start(args, format);
    msg_local_vdebug_va(module, format, args);
    va_end(args);
}

MSG_CAPTURE::MSG_CAPTURE(bool echo) : m_previous(g_capture), m_echo(echo) { g_capture = this; }

MSG_CAPTURE::~MSG_CAPTURE() { g_capture = m_previous; }

std::vector<std::string> MSG_CAPTURE::texts(MSG_KIND kind) const {
    std::vector<std::string> out;
    for (const auto& r : m_records)
        if (r.kind == kind) out.push_back(r.text);
    return out;
}

bool MSG_CAPTURE::has(MSG_KIND kind, const std::string& text) const {
    for (const auto& r : m_records)
        if (r.kind == kind && r.text == text) return true;
    return false;
}
