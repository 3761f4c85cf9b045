// A program of another module: uses only the installed package (umbrella header + library).
#include <dev_ddb.h>

#include <cstdio>
#include <string>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: consumer SCRATCH_FILE\n");
        return 2;
    }
    DEV_REGEXP re("^\\s*(INT_\\w+)\\s*=\\s*(.+?)\\s*$");
    if (!re.match("  INT_PAD_COUNT = 12 ")) return 1;
    std::string key, value;
    re.group(1, key);
    re.group(2, value);

    DEV_ARCHIVE out(0);  // plain: a tiny compressed file would be judged plain by the probe
    if (!out.open(FIO_PATH(argv[1]), DEV_ARCHIVE::WRITE)) return 1;
    out.sprintf("%s=%s\n", key.c_str(), value.c_str());
    out.close(true);

    DEV_ARCHIVE in(0);
    if (!in.open(FIO_PATH(argv[1]), DEV_ARCHIVE::READ)) return 1;
    std::string line;
    in.getline(line, '\n', false);
    in.close(true);
    std::printf("%s\n", line.c_str());
    return line == "INT_PAD_COUNT=12" ? 0 : 1;
}
