// The engine under every block-structured text reader of the device database (family info,
// HDR, PAD, PKG, PART_INFO, RSI). A format's reader keeps its own patterns and block rules
// and asks the engine for the rest:
//
//   - files: a DEV_TEXT_FILE opens one file through DEV_ARCHIVE (plain or compressed),
//     reports the format's own words when it cannot be read, counts lines from 1 (lines
//     read ahead by a 2D continuation included) and hands out the line such a read-ahead
//     left pending before reading a new one;
//   - includes: the path of an include line is taken as written or joined to the including
//     file's directory, per the format. An include that would read a file already being
//     read (directly or through other files), or that nests deeper than
//     DEV_TEXT_READER::MAX_INCLUDE_DEPTH files, is refused with one error naming the chain
//     of files; the including file is read on;
//   - reports: the located notes "Error at %s, line %d parsing file %s, line number %d - %s"
//     (then the internal error with the message) and "Warning at ...", naming the
//     reporting source file and line and the position in the file being read.
//
// One DEV_TEXT_READER serves one top-level read and the files it includes; a format's
// reader creates one per read (with its compiled patterns beside it), so two reads never
// share match state.
#ifndef VELCORA_DEV_TEXT_READER_H
#define VELCORA_DEV_TEXT_READER_H

#include <cstddef>
#include <string>
#include <vector>

#include "dev_archive_export.h"
#include "dev_text_diagnostics.h"
#include "dev_utility.h"
#include "host/fio.h"

// How the path of an include line is found.
enum DEV_INCLUDE_POLICY {
    // As written: a relative path is relative to the working directory.
    DEV_INCLUDE_AS_WRITTEN,
    // A relative path is joined to the including file's directory and simplified (when the
    // including file's path has a directory), with the debug notes "directory %s" and
    // "File %s's relative include file %s resolved to %s".
    DEV_INCLUDE_BESIDE_INCLUDER
};

// What a format reports when a file cannot be read: `missing_file`, a format with the
// file's full path, when the file does not exist (null: nothing of its own), then
// `not_good`, when the opened stream is not good. Both are internal errors.
struct DEV_TEXT_OPEN_REPORTS {
    const char* missing_file;
    const char* not_good;
};

// The first word of a line: the run of word characters after leading blanks (empty when
// the first non-blank character is not a word character). A pattern that starts with
// blanks and a literal keyword or key can only match a line whose first word is that
// keyword or key (or begins with it), so readers may test only the patterns of a line's
// first word where the outcome is the same as trying them all in their order.
struct DEV_WORD {
    const char* begin;
    size_t length;
    bool operator==(const char* word) const;
    bool starts_with(const char* prefix) const;
    std::string text() const { return std::string(begin, length); }
};
DEV_WORD dev_first_word(const std::string& line);

class DEV_TEXT_FILE;

class DEV_TEXT_READER {
public:
    // Files open at once, the top-level file included.
    static constexpr int MAX_INCLUDE_DEPTH = 64;

    explicit DEV_TEXT_READER(DEV_INCLUDE_POLICY policy);
    DEV_TEXT_READER(const DEV_TEXT_READER&) = delete;
    DEV_TEXT_READER& operator=(const DEV_TEXT_READER&) = delete;

    // The innermost file being read (null outside a read).
    DEV_TEXT_FILE* current() const { return m_files.empty() ? nullptr : m_files.back(); }

    // The path to read for the include line naming `written`, resolved by the policy. False,
    // after the located error naming the chain of files, when the include would close a
    // cycle or nest too deep.
    bool resolve_include(const std::string& written, FIO_PATH* path);

    // An include line of the format: `word` is "include" and `pattern`, whose group 1 is the
    // path as written, matches `line`. Then `read` is called with the path resolved, unless
    // the include is refused (reported). True for an include line, refused or not.
    template <typename READ>
    bool include_line(const DEV_WORD& word, DEV_REGEXP& pattern, const std::string& line, READ&& read) {
        if (!(word == "include") || !pattern.match(line)) return false;
        std::string written;
        pattern.group(1, written);
        FIO_PATH included;
        if (resolve_include(written, &included)) read(included);
        return true;
    }

    // Located reports at the current file and line. The reporting source is the caller's.
    // Each also becomes a DEV_TEXT_DIAGNOSTIC of the innermost DEV_TEXT_DIAGNOSTICS.
    void error(const std::string& message, const char* source = __builtin_FILE(), int line = __builtin_LINE());
    void warning(const std::string& message, const char* source = __builtin_FILE(),
                 int line = __builtin_LINE());
    // An error raised directly: the internal error with the message alone, without the
    // located note (the formats that report syntax errors so); still a diagnostic of the
    // current file and line.
    void raise(const std::string& message, const char* source = __builtin_FILE(), int line = __builtin_LINE());
    // A note of the format's own text on the debug channel, located for diagnostics.
    void note(const std::string& message);

    // "Syntax error in file %s, line %d: %s" for `text` at the current position (the file
    // named without its directory).
    std::string syntax_error_message(const std::string& text) const;

private:
    friend class DEV_TEXT_FILE;
    void diagnose(DEV_TEXT_DIAGNOSTIC::KIND kind, const std::string& message, std::vector<std::string> reports);
    // "a -> b -> c": the files being read, outermost first, then `next`.
    std::string chain_text(const std::string& next) const;

    DEV_INCLUDE_POLICY m_policy;
    std::vector<DEV_TEXT_FILE*> m_files;
    std::vector<std::string> m_identities;  // canonical paths of m_files
};

// One file being read. Opened by the constructor (failures reported in the format's words),
// closed by the destructor; while it lives it is its reader's current file.
class DEV_TEXT_FILE {
public:
    DEV_TEXT_FILE(DEV_TEXT_READER& reader, const FIO_PATH& path, const DEV_TEXT_OPEN_REPORTS& reports);
    ~DEV_TEXT_FILE();
    DEV_TEXT_FILE(const DEV_TEXT_FILE&) = delete;
    DEV_TEXT_FILE& operator=(const DEV_TEXT_FILE&) = delete;

    // True when the file opened and its stream is good.
    bool is_open() const { return m_open; }
    // True when nothing is left to read (the pending line counts as left).
    bool at_end() const;
    const FIO_PATH& path() const { return m_path; }

    // The next line (the pending one first); false at the end of the file. Each line read
    // from the file counts one; the pending line was counted when it was read.
    bool next_line(std::string& line);
    // The next line from the file without counting it (for readers that count otherwise).
    bool next_uncounted_line(std::string& line);
    // Leaves `line` to be handed out by the next call of next_line.
    void put_back(std::string&& line);
    bool has_pending() const { return m_has_pending; }

    // The number of the line last read (0 before the first).
    int line_number() const { return m_line_number; }
    // Moves the line count on by `count` (formats whose count runs ahead of the lines).
    void advance_line_number(int count) { m_line_number += count; }

private:
    DEV_TEXT_READER& m_reader;
    FIO_PATH m_path;
    DEV_ARCHIVE m_archive;
    bool m_open = false;
    int m_line_number = 0;
    std::string m_pending;
    bool m_has_pending = false;
};


// The lines every format skips: blank ("^\s*$") and comment ("^\s*#.*$") lines. Only a line
// that is all blank, or whose first non-blank character is "#", is given to the patterns.
class DEV_SKIPPED_LINES {
public:
    DEV_SKIPPED_LINES();
    bool matches(const std::string& line);

private:
    DEV_REGEXP m_blank, m_comment;
};

#endif
