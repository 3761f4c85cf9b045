// Attribute lines in a file being read by the text-reader engine: one call reads a line of
// any kind of a record, gathers a 2D value's continuation lines from the file (the line
// after them is put back for the reader), and reports a bad key or value as the reader's
// located error.
#ifndef VELCORA_DEV_TEXT_ATTRIBUTE_H
#define VELCORA_DEV_TEXT_ATTRIBUTE_H

#include <string>

#include "dev_attribute_io.h"
#include "dev_text_reader.h"

// NO_MATCH when the line is no attribute line of the record's kinds (tried in dump order,
// which gives the same outcome as any order: each kind's pattern needs its own key prefix).
// Errors are located at the caller's source and line.
template <typename RECORD>
DEV_ATTRIBUTE_STATUS dev_text_read_attribute(DEV_ATTRIBUTE_SYNTAX& syntax, DEV_TEXT_READER& text,
                                             DEV_TEXT_FILE& file, const std::string& line, RECORD& record,
                                             const char* source = __builtin_FILE(), int source_line = __builtin_LINE()) {
    std::string message, pending;
    bool has_pending = false;
    const DEV_ATTRIBUTE_STATUS status = dev_attribute_read_any(
        syntax, line, record, &message, [&file](std::string& next) { return file.next_line(next); }, &pending,
        &has_pending);
    if (has_pending) file.put_back(std::move(pending));
    if (status == DEV_ATTRIBUTE_ERROR) text.error(message, source, source_line);
    return status;
}

#endif
