// A deliberately small reader of the family-info text, independent of the library's own: it
// knows only blocks ("family|device|part NAME" ... "end") and "KEY = value" lines, keeping
// every value of a key in order with its quotes removed. Resource lists are kept under their
// quoted resource names. Used to recompute what the part manager should answer.
#ifndef VELCORA_TESTS_PART_MANAGER_CATALOGUE_TEXT_H
#define VELCORA_TESTS_PART_MANAGER_CATALOGUE_TEXT_H

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

struct TEXT_BLOCK {
    std::map<std::string, std::vector<std::string>> keys;
    std::string one(const std::string& key) const {
        auto it = keys.find(key);
        return it == keys.end() || it->second.empty() ? std::string() : it->second.front();
    }
    const std::vector<std::string>& all(const std::string& key) const {
        static const std::vector<std::string> none;
        auto it = keys.find(key);
        return it == keys.end() ? none : it->second;
    }
    bool has(const std::string& key, const std::string& value) const {
        for (const std::string& v : all(key))
            if (v == value) return true;
        return false;
    }
};

struct TEXT_CATALOGUE {
    std::map<std::string, TEXT_BLOCK> families, devices, parts;
    std::vector<std::string> part_order;  // as written

    static std::string trim(const std::string& s) {
        size_t b = s.find_first_not_of(" \t\r"), e = s.find_last_not_of(" \t\r");
        return b == std::string::npos ? std::string() : s.substr(b, e - b + 1);
    }

    bool load(const std::string& path) {
        std::ifstream in(path);
        if (!in) return false;
        std::string line;
        TEXT_BLOCK* block = nullptr;
        while (std::getline(in, line)) {
            std::string t = trim(line);
            if (t.empty() || t[0] == '#') continue;
            std::istringstream words(t);
            std::string head, name;
            words >> head >> name;
            if (head == "end") { block = nullptr; continue; }
            if (!block && (head == "family" || head == "device" || head == "part")) {
                auto& table = head == "family" ? families : head == "device" ? devices : parts;
                if (head == "part") part_order.push_back(name);
                block = &table[name];
                continue;
            }
            size_t eq = t.find(" = ");
            if (!block || eq == std::string::npos) continue;
            std::string key = trim(t.substr(0, eq)), value = trim(t.substr(eq + 3));
            if (value.size() >= 2 && value.front() == '"' && value.back() == '"') value = value.substr(1, value.size() - 2);
            block->keys[key].push_back(value);
        }
        return true;
    }
};

#endif
