// The list parsers scan their text in place; these tests compare them on many random
// texts with straightforward tokenizer-based versions of the same rules.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "dev_utility.h"
#include "host/astr_value_names.h"

namespace {

bool reference_vec_double(const std::string& text, std::vector<double>& out) {
    DEV_TOKENIZER t;
    std::string token;
    out.clear();
    t.init(text, "{}, ", false, false);
    while (t.get_token(token)) {
        if (!dev_string_is_float(token)) {
            out.push_back(-1.0);
            return false;
        }
        out.push_back(std::atof(token.c_str()));
    }
    return true;
}

bool reference_vec_int(const std::string& text, std::vector<int>& out) {
    DEV_TOKENIZER t;
    std::string token;
    out.clear();
    t.init(text, "{}, ", false, false);
    int v = 0;
    while (t.get_token(token)) {
        if (!dev_string_to_int(token, v)) return false;
        out.push_back(v);
    }
    return true;
}

bool reference_vec_string(const std::string& text, std::vector<std::string>& out) {
    DEV_TOKENIZER t;
    std::string token, quoted;
    out.clear();
    t.init(text, "{}, ", true, true);
    while (t.get_token(token)) {
        if (token[0] != '"') {
            token.pop_back();
            if (!token.empty()) out.push_back(token);
            continue;
        }
        quoted = token;
        if (quoted.find('"', 1) == std::string::npos) {
            bool closed = false;
            while (!closed && t.get_token(token)) {
                quoted += token;
                closed = token.find('"') != std::string::npos;
            }
            if (!closed) return false;
        }
        quoted.pop_back();
        out.push_back(quoted.size() >= 2 ? quoted.substr(1, quoted.size() - 2) : std::string());
    }
    return true;
}

// One name per (row, column): "N<row><column>" means row*10+column.
class GRID_NAMES : public ASTR_NO_VALUE_NAMES {
public:
    bool exists_enum_data_by_string(int, int row, int column, const std::string& name) const override {
        return name == "N" + std::to_string(row) + std::to_string(column);
    }
    int get_enum_data_by_string(int, int row, int column, const std::string&) const override {
        return row * 10 + column;
    }
};

bool reference_2d(const ASTR_VALUE_NAMES& names, const std::string& text, DEV_2D_INT_ARRAY& result) {
    result.clear();
    size_t scan = text.find('{');
    scan = scan == std::string::npos ? 0 : scan + 1;
    bool ok = true;
    while (scan < text.size()) {
        size_t open = text.find('{', scan);
        if (open == std::string::npos) break;
        size_t close = text.find('}', open + 1);
        std::string row_text = close == std::string::npos ? text.substr(open + 1) : text.substr(open + 1, close - open - 1);
        std::vector<int> row;
        if (ok) {
            DEV_TOKENIZER t;
            std::string token;
            t.init(row_text, ", ", false, false);
            const int r = static_cast<int>(result.size());
            while (t.get_token(token)) {
                const int c = static_cast<int>(row.size());
                if (dev_string_is_integer(token)) {
                    row.push_back(std::atoi(token.c_str()));
                } else if (names.exists_enum_data_by_string(0, r, c, token)) {
                    row.push_back(names.get_enum_data_by_string(0, r, c, token));
                } else {
                    row.push_back(-1);
                    ok = false;
                    break;
                }
            }
        }
        result.push_back(row);
        if (close == std::string::npos) break;
        scan = close + 1;
    }
    return ok;
}

std::string random_text(std::mt19937& rng, const std::vector<std::string>& pieces, int max_pieces) {
    std::uniform_int_distribution<int> count(0, max_pieces);
    std::uniform_int_distribution<size_t> pick(0, pieces.size() - 1);
    std::string s;
    for (int i = count(rng); i > 0; --i) s += pieces[pick(rng)];
    return s;
}

}  // namespace

TEST(ListParsersAgainstReference, RandomTexts) {
    std::mt19937 rng(20261122);
    const std::vector<std::string> pieces = {"{", "}", ",", " ", "\"", "a", "b c", "1", "-", "7", ".", "5",
                                             "e", "D", "+", "\t", "N00", "N11", "N01", "99999999999999999999",
                                             "-2147483649", "x", "e999", "e-999", "0.1", "\t+"};
    std::vector<double> d1, d2;
    std::vector<int> i1, i2;
    std::vector<std::string> s1, s2;
    DEV_2D_INT_ARRAY a1 = {{5, 5}, {6}, {7}, {8}}, a2;  // the parser reuses rows it is given
    GRID_NAMES names;
    for (int round = 0; round < 20000; ++round) {
        const std::string text = random_text(rng, pieces, 12);
        SCOPED_TRACE("text: [" + text + "]");
        bool r1 = dev_string_to_vec_double(text, d1), r2 = reference_vec_double(text, d2);
        ASSERT_EQ(r1, r2);
        ASSERT_EQ(d1, d2);
        ASSERT_EQ(dev_string_to_vec_int(text, i1), reference_vec_int(text, i2));
        ASSERT_EQ(i1, i2);
        ASSERT_EQ(dev_string_to_vec_string(text, s1), reference_vec_string(text, s2));
        ASSERT_EQ(s1, s2);
        ASSERT_EQ(dev_string_to_2d_int(names, 0, text, &a1), reference_2d(names, text, a2));
        ASSERT_EQ(a1, a2);
    }
}
