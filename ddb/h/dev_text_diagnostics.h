// DEV_TEXT_DIAGNOSTICS: the problems the text readers (family info, HDR, PAD, PKG, PART_INFO,
// RSI) find, each with its file and line, for tools that show them as compilers do
// ("FILE:LINE: error: MESSAGE"). While a DEV_TEXT_DIAGNOSTICS lives, the readers add to it
// every located error, warning and note they report; captures nest, the innermost one
// receives. The readers still report through the host's channels as always; each
// diagnostic lists the exact texts it was reported with there (`reports`), so a tool that
// also captures the host's reports can tell which of them a diagnostic stands for.
#ifndef VELCORA_DEV_TEXT_DIAGNOSTICS_H
#define VELCORA_DEV_TEXT_DIAGNOSTICS_H

#include <string>
#include <vector>

#include "dev_export.h"

struct DEV_TEXT_DIAGNOSTIC {
    enum KIND { ERROR, WARNING, NOTE };
    KIND kind;
    std::string file;  // the full path of the file read
    int line;          // its line number (0: the file as a whole)
    std::string message;
    std::vector<std::string> reports;  // the host reports it was made with, in order
};

class DEV_EXPORT DEV_TEXT_DIAGNOSTICS {
public:
    DEV_TEXT_DIAGNOSTICS();
    ~DEV_TEXT_DIAGNOSTICS();
    DEV_TEXT_DIAGNOSTICS(const DEV_TEXT_DIAGNOSTICS&) = delete;
    DEV_TEXT_DIAGNOSTICS& operator=(const DEV_TEXT_DIAGNOSTICS&) = delete;

    const std::vector<DEV_TEXT_DIAGNOSTIC>& diagnostics() const { return m_diagnostics; }

    // Adds to the innermost capture, if any (the readers' side).
    static void add(DEV_TEXT_DIAGNOSTIC diagnostic);

private:
    std::vector<DEV_TEXT_DIAGNOSTIC> m_diagnostics;
    DEV_TEXT_DIAGNOSTICS* m_previous;
};

#endif
