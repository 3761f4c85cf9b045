// Test fixture that captures every internal-error report and debug note of the library.
#ifndef VELCORA_TESTS_CAPTURE_FIXTURE_H
#define VELCORA_TESTS_CAPTURE_FIXTURE_H

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "host/cfg.h"
#include "host/msg.h"

class CaptureTest : public ::testing::Test {
protected:
    void SetUp() override { m_capture = std::make_unique<MSG_CAPTURE>(); }
    void TearDown() override {
        m_capture.reset();
        cfg_reload();
        tst_clear();
    }

    MSG_CAPTURE& capture() { return *m_capture; }
    std::vector<std::string> errors() const { return m_capture->internal_errors(); }
    std::vector<std::string> notes() const { return m_capture->debug_notes(); }
    void clear_reports() { m_capture->clear(); }

private:
    std::unique_ptr<MSG_CAPTURE> m_capture;
};

// A fresh temporary directory, removed with its contents at the end of the scope.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::string& path() const { return m_path; }
    std::string file(const std::string& name) const { return m_path + "/" + name; }
    // Writes `content` to the file `name` below the directory and returns its full path.
    std::string write(const std::string& name, const std::string& content) const;

private:
    std::string m_path;
};

std::string read_file(const std::string& path);

#endif
