// The ball map of a package as SVG (see ddbtool_ball_map.h).
#include "ddbtool_ball_map.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <set>
#include <vector>

namespace {

constexpr double PITCH = 26.0;   // between ball centres
constexpr double RADIUS = 11.0;
constexpr double MARGIN = 40.0;
constexpr double TITLE_HEIGHT = 40.0;
constexpr double LEGEND_WIDTH = 220.0;

struct KIND {
    std::string label;
    std::string fill;
    std::string stroke;
    std::string text = "#000000";  // the ball names on it
};

struct BALL {
    const DEV_PIN* pin;
    double x, y;
    int kind;  // index into the kinds
};

std::string escaped(const std::string& text) {
    std::string out;
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        default:
            // Control characters are not allowed in XML 1.0.
            if (static_cast<unsigned char>(c) >= 0x20 || c == '\t') out += c;
        }
    }
    return out;
}

bool flag(const DEV_PKG_INFO_BODY& package, uint32_t id, DEV_PIN_BOOL_DATA_ENUM key) {
    return package.is_valid_pin_bool_enum(id, key) && package.get_pin_bool_data(id, key);
}

// The kinds, in legend order, and each pin's kind.
class CLASSIFIER {
public:
    explicit CLASSIFIER(const DEV_PKG_INFO_BODY& package) : m_package(package) {}

    int kind_of(uint32_t id) {
        const DEV_PKG_INFO_BODY& p = m_package;
        if (flag(p, id, DEV_PIN_BOOL_IS_NO_CONNECT)) return fixed("no-connect", "#ffffff", "#888888");
        if (flag(p, id, DEV_PIN_BOOL_IS_GROUND)) return fixed("ground", "#2b2b2b", "#000000", "#ffffff");
        if (flag(p, id, DEV_PIN_BOOL_IS_POWER)) return fixed("power", "#d62728", "#7f1010", "#ffffff");
        if (flag(p, id, DEV_PIN_BOOL_IS_USER_IO)) {
            const bool banked = p.is_valid_pin_int_enum(id, DEV_PIN_INT_IO_BANK);
            return banked ? bank(p.get_pin_int_data(id, DEV_PIN_INT_IO_BANK)) : fixed("user I/O", "#1f77b4", "#0b3d61");
        }
        if (flag(p, id, DEV_PIN_BOOL_IS_CONFIG) || flag(p, id, DEV_PIN_BOOL_IS_JTAG))
            return fixed("configuration", "#4b2d6b", "#2a1640", "#ffffff");
        if (flag(p, id, DEV_PIN_BOOL_IS_XCVR)) return fixed("transceiver", "#17becf", "#0b6570");
        return fixed("other dedicated", "#bcbd22", "#6b6b10");
    }
    const std::vector<KIND>& kinds() const { return m_kinds; }
    // Legend order: user I/O banks first (by bank), then the fixed kinds as first seen.
    std::vector<int> legend_order() const {
        std::vector<int> order;
        for (const auto& b : m_banks) order.push_back(b.second);
        for (size_t k = 0; k < m_kinds.size(); ++k)
            if (std::find(order.begin(), order.end(), static_cast<int>(k)) == order.end())
                order.push_back(static_cast<int>(k));
        return order;
    }

private:
    int fixed(const std::string& label, const char* fill, const char* stroke, const char* text = "#000000") {
        auto found = m_fixed.find(label);
        if (found != m_fixed.end()) return found->second;
        m_kinds.push_back({label, fill, stroke, text});
        return m_fixed[label] = static_cast<int>(m_kinds.size() - 1);
    }
    int bank(int b) {
        auto found = m_banks.find(b);
        if (found != m_banks.end()) return found->second;
        // Hues spread by the golden angle, so neighbouring banks differ.
        char fill[32];
        std::snprintf(fill, sizeof fill, "hsl(%d,60%%,62%%)", static_cast<int>(std::fmod(200.0 + 137.5 * b, 360.0)));
        m_kinds.push_back({"user I/O, bank " + std::to_string(b), fill, "#333333"});
        return m_banks[b] = static_cast<int>(m_kinds.size() - 1);
    }

    const DEV_PKG_INFO_BODY& m_package;
    std::vector<KIND> m_kinds;
    std::map<std::string, int> m_fixed;
    std::map<int, int> m_banks;
};

// "AB12" -> ("AB", 12); false for other names.
bool ball_name(const std::string& name, std::string* row, int* column) {
    size_t i = 0;
    while (i < name.size() && std::isupper(static_cast<unsigned char>(name[i]))) ++i;
    if (i == 0 || i == name.size() || i > 3 || name.size() - i > 4) return false;
    for (size_t j = i; j < name.size(); ++j)
        if (!std::isdigit(static_cast<unsigned char>(name[j]))) return false;
    *row = name.substr(0, i);
    *column = std::stoi(name.substr(i));
    return true;
}

// Places by ball names; false when a pin's name is not a ball name.
bool place_by_ball_names(const std::vector<DEV_PIN*>& pins, std::vector<BALL>& balls) {
    std::vector<std::string> rows(pins.size());
    std::vector<int> columns(pins.size());
    for (size_t i = 0; i < pins.size(); ++i)
        if (!ball_name(pins[i]->get_name(), &rows[i], &columns[i])) return false;
    // Rows as the names run: shorter labels first, then in letter order.
    auto earlier = [](const std::string& a, const std::string& b) {
        return a.size() != b.size() ? a.size() < b.size() : a < b;
    };
    std::set<std::string, decltype(earlier)> labels(earlier);
    labels.insert(rows.begin(), rows.end());
    std::map<std::string, int> rank;
    for (const std::string& label : labels) rank.emplace(label, static_cast<int>(rank.size()));
    const int first_column = *std::min_element(columns.begin(), columns.end());
    for (size_t i = 0; i < pins.size(); ++i)
        balls.push_back({pins[i], (columns[i] - first_column) * PITCH, rank[rows[i]] * PITCH, 0});
    return true;
}

// Places by the pins' X_UM/Y_UM (y up); false when a pin lacks them.
bool place_by_position(const DEV_PKG_INFO_BODY& package, std::vector<BALL>& balls) {
    std::vector<double> xs, ys;
    for (const DEV_PIN* pin : package.get_pins()) {
        if (!pin->is_valid_int_enum(DEV_PIN_INT_X_UM) || !pin->is_valid_int_enum(DEV_PIN_INT_Y_UM)) return false;
        xs.push_back(pin->get_int_data(DEV_PIN_INT_X_UM));
        ys.push_back(pin->get_int_data(DEV_PIN_INT_Y_UM));
    }
    // The closest two pins stand one pitch apart.
    double closest = 0;
    for (size_t i = 1; i < xs.size(); ++i) {
        const double d = std::hypot(xs[i] - xs[i - 1], ys[i] - ys[i - 1]);
        if (d > 0 && (closest == 0 || d < closest)) closest = d;
    }
    const double scale = closest > 0 ? PITCH / closest : 1.0;
    const double x0 = *std::min_element(xs.begin(), xs.end()), y1 = *std::max_element(ys.begin(), ys.end());
    for (size_t i = 0; i < xs.size(); ++i)
        balls.push_back({package.get_pins()[i], (xs[i] - x0) * scale, (y1 - ys[i]) * scale, 0});
    return true;
}

void place_in_rows(const std::vector<DEV_PIN*>& pins, std::vector<BALL>& balls) {
    const size_t per_row = static_cast<size_t>(std::ceil(std::sqrt(static_cast<double>(pins.size()))));
    for (size_t i = 0; i < pins.size(); ++i)
        balls.push_back({pins[i], static_cast<double>(i % per_row) * PITCH, static_cast<double>(i / per_row) * PITCH, 0});
}

}  // namespace

bool ddbtool_write_ball_map(const DEV_PKG_INFO_BODY& package, const std::string& title, const std::string& path) {
    std::vector<BALL> balls;
    if (!place_by_ball_names(package.get_pins(), balls)) {
        balls.clear();
        if (!place_by_position(package, balls)) {
            balls.clear();
            place_in_rows(package.get_pins(), balls);
        }
    }
    CLASSIFIER classifier(package);
    double width = 0, height = 0;
    for (BALL& ball : balls) {
        ball.kind = classifier.kind_of(ball.pin->get_id());
        width = std::max(width, ball.x);
        height = std::max(height, ball.y);
    }
    const std::vector<int> legend = classifier.legend_order();
    const double map_width = width + 2 * MARGIN, map_height = height + 2 * MARGIN;
    const double total_width = map_width + LEGEND_WIDTH;
    const double total_height = std::max(map_height, 24.0 * legend.size() + 2 * MARGIN) + TITLE_HEIGHT;

    std::ofstream out(path, std::ios::trunc);
    if (!out) return false;
    char buffer[512];
    std::snprintf(buffer, sizeof buffer,
                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                  "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\" viewBox=\"0 0 %.0f %.0f\" "
                  "font-family=\"sans-serif\">\n",
                  total_width, total_height, total_width, total_height);
    out << buffer;
    const std::string name = escaped(title);
    out << "<title>" << name << " ball map</title>\n"
        << "<rect width=\"100%\" height=\"100%\" fill=\"#fafafa\"/>\n"
        << "<text x=\"" << MARGIN << "\" y=\"28\" font-size=\"20\" font-weight=\"bold\">" << name << " (" << balls.size()
        << " pins)</text>\n<g transform=\"translate(" << MARGIN << "," << MARGIN + TITLE_HEIGHT << ")\">\n";
    for (const BALL& ball : balls) {
        const KIND& kind = classifier.kinds()[ball.kind];
        const std::string ball_name = escaped(ball.pin->get_name());
        std::snprintf(buffer, sizeof buffer,
                      "<circle class=\"ball\" cx=\"%.1f\" cy=\"%.1f\" r=\"%.1f\" fill=\"%s\" stroke=\"%s\">",
                      ball.x, ball.y, RADIUS, kind.fill.c_str(), kind.stroke.c_str());
        out << buffer << "<title>" << ball_name << " (pin " << ball.pin->get_id() << "): " << escaped(kind.label)
            << "</title></circle>\n";
        std::snprintf(buffer, sizeof buffer,
                      "<text x=\"%.1f\" y=\"%.1f\" font-size=\"7\" text-anchor=\"middle\" fill=\"%s\">", ball.x,
                      ball.y + 2.5, kind.text.c_str());
        out << buffer << ball_name << "</text>\n";
    }
    out << "</g>\n<g transform=\"translate(" << map_width << "," << MARGIN + TITLE_HEIGHT << ")\">\n"
        << "<text x=\"0\" y=\"-12\" font-size=\"14\" font-weight=\"bold\">Legend</text>\n";
    for (size_t i = 0; i < legend.size(); ++i) {
        const KIND& kind = classifier.kinds()[legend[i]];
        std::snprintf(buffer, sizeof buffer,
                      "<circle cx=\"8\" cy=\"%.1f\" r=\"7\" fill=\"%s\" stroke=\"%s\"/>"
                      "<text x=\"22\" y=\"%.1f\" font-size=\"12\">",
                      24.0 * i + 6, kind.fill.c_str(), kind.stroke.c_str(), 24.0 * i + 10);
        out << buffer << escaped(kind.label) << "</text>\n";
    }
    out << "</g>\n</svg>\n";
    out.close();
    return static_cast<bool>(out);
}
