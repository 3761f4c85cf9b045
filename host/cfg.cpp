// Configuration switches from a settings file and from code; test settings in memory.
#include "host/cfg.h"

#include <cstdlib>
#include <fstream>
#include <map>

#include "host/gen.h"

namespace {

struct NOCASE_LESS {
    bool operator()(const std::string& a, const std::string& b) const {
        return gen_stricmp(a.c_str(), b.c_str()) < 0;
    }
};

struct SETTINGS {
    std::map<std::string, std::string, NOCASE_LESS> values;
    std::map<std::pair<std::string, std::string>, std::string> tests;
    unsigned long generation = 1;
    bool loaded = false;
};

SETTINGS& settings() {
    static SETTINGS s;
    return s;
}

std::string trim(const std::string& s) {
    size_t b = s.find_first_not_of(" \t\r\n");
    if (b == std::string::npos) return "";
    size_t e = s.find_last_not_of(" \t\r\n");
    return s.substr(b, e - b + 1);
}

void load_file(SETTINGS& s) {
    const char* env = std::getenv("VELCORA_INI");
    std::string path = env && *env ? env : "velcora.ini";
    std::ifstream in(path);
    std::string line;
    while (in && std::getline(in, line)) {
        std::string t = trim(line);
        if (t.empty() || t[0] == '#' || t[0] == ';') continue;
        size_t eq = t.find('=');
        if (eq == std::string::npos) continue;
        std::string name = trim(t.substr(0, eq));
        std::string value = trim(t.substr(eq + 1));
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
            value = value.substr(1, value.size() - 2);
        if (!name.empty()) s.values[name] = value;
    }
}

SETTINGS& loaded() {
    SETTINGS& s = settings();
    if (!s.loaded) {
        s.loaded = true;
        load_file(s);
    }
    return s;
}

const std::string* lookup(const char* name) {
    SETTINGS& s = loaded();
    auto it = s.values.find(name ? name : "");
    return it == s.values.end() ? nullptr : &it->second;
}

}  // namespace

bool cfg_is_on(const char* name, bool default_value) {
    const std::string* v = lookup(name);
    if (!v) return default_value;
    const char* t = v->c_str();
    if (!gen_stricmp(t, "1") || !gen_stricmp(t, "on") || !gen_stricmp(t, "true") || !gen_stricmp(t, "yes"))
        return true;
    if (!gen_stricmp(t, "0") || !gen_stricmp(t, "off") || !gen_stricmp(t, "false") || !gen_stricmp(t, "no"))
        return false;
    return default_value;
}

int cfg_get_int_value(const char* name, int default_value) {
    const std::string* v = lookup(name);
    if (!v || v->empty()) return default_value;
    char* end = nullptr;
    long n = std::strtol(v->c_str(), &end, 0);
    if (end == v->c_str() || *end != '\0' || n < INT32_MIN || n > INT32_MAX) return default_value;
    return static_cast<int>(n);
}

std::string cfg_get_value(const char* name, const char* default_value) {
    const std::string* v = lookup(name);
    return v ? *v : std::string(default_value ? default_value : "");
}

bool cfg_has_value(const char* name) { return lookup(name) != nullptr; }

void cfg_set_value(const char* name, const std::string& value) {
    SETTINGS& s = loaded();
    s.values[name ? name : ""] = value;
    ++s.generation;
}

void cfg_unset_value(const char* name) {
    SETTINGS& s = loaded();
    s.values.erase(name ? name : "");
    ++s.generation;
}

void cfg_reload() {
    SETTINGS& s = settings();
    s.values.clear();
    s.loaded = true;
    load_file(s);
    ++s.generation;
}

unsigned long cfg_generation() { return settings().generation; }

void cfg_reset_cached_switches() { ++settings().generation; }

std::string tst_get_value(const std::string& section, const std::string& key) {
    auto& t = settings().tests;
    auto it = t.find({section, key});
    return it == t.end() ? std::string() : it->second;
}

bool tst_has_value(const std::string& section, const std::string& key) {
    return settings().tests.count({section, key}) != 0;
}

void tst_set_value(const std::string& section, const std::string& key, const std::string& value) {
    settings().tests[{section, key}] = value;
}

void tst_clear() { settings().tests.clear(); }
