// Messages, settings, paths, installation root and dynamic modules of the host.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "capture_fixture.h"
#include "host/cfg.h"
#include "host/fio.h"
#include "host/gen.h"
#include "host/msg.h"
#include "host/thr_drl.h"

using HostMessages = CaptureTest;

TEST_F(HostMessages, CaptureRecordsExactTextsAndNests) {
    unsigned long before = msg_internal_error_count();
    MSG_INTERNAL_ERROR_report("part > DEV_PART_INVALID", "DEV", "ddb/dev/dev_part_manager", 42);
    msg_local_vdebug("DEV", "Loading %s: %d", "x", 3);
    {
        MSG_CAPTURE inner;
        DEV_INTERNAL_ERROR("inner only");
        EXPECT_EQ(inner.internal_errors(), std::vector<std::string>{"inner only"});
        EXPECT_EQ(inner.records()[0].source, "tests/host/host_services_test");
    }
    EXPECT_EQ(msg_internal_error_count(), before + 2);
    ASSERT_EQ(errors().size(), 1u);
    EXPECT_EQ(errors()[0], "part > DEV_PART_INVALID");
    EXPECT_EQ(capture().records()[0].line, 42);
    EXPECT_TRUE(capture().has_debug("Loading x: 3"));

    std::string big(3000, 'y');
    msg_local_vdebug("DEV", "%s!", big.c_str());
    EXPECT_EQ(notes().back(), big + "!");
}

TEST_F(HostMessages, AssertMacrosReportTheConditionText) {
    int key = 5;
    EXPECT_TRUE(DEV_ASSERT(key == 5));
    EXPECT_FALSE(DEV_ASSERT(key >= 0 && key < 3));
    EXPECT_FALSE(DEV_ASSERT_TEXT(key < 3, "basic_info"));
    EXPECT_EQ(errors(), (std::vector<std::string>{"key >= 0 && key < 3", "basic_info"}));
}

// The build maps the source root away, so the compiler's path is the report's path.
TEST(HostMessageSource, ReportPathsAreTheCompilersWithoutExtension) {
    EXPECT_EQ(msg_source_name(__FILE__), "tests/host/host_services_test");
    EXPECT_EQ(msg_source_name("ddb/dev/dev_path.cpp"), "ddb/dev/dev_path");
    EXPECT_EQ(msg_source_name("ddb.dir/dev_path"), "ddb.dir/dev_path");
}

using HostSettings = CaptureTest;

TEST_F(HostSettings, SwitchesFromFileAndCode) {
    TempDir dir;
    std::string ini = dir.write("velcora.ini",
                                "# comment\n dev_debug_path = on\nddb_compression_level= 7\n"
                                "name = \"quoted value\"\nbroken line\nnumber = 12x\n");
    setenv("VELCORA_INI", ini.c_str(), 1);
    cfg_reload();
    EXPECT_TRUE(cfg_is_on("dev_debug_path", false));
    EXPECT_TRUE(cfg_is_on("DEV_DEBUG_PATH", false));
    EXPECT_EQ(cfg_get_int_value("ddb_compression_level", 0), 7);
    EXPECT_EQ(cfg_get_int_value("number", -1), -1);
    EXPECT_EQ(cfg_get_value("name"), "quoted value");
    EXPECT_FALSE(cfg_is_on("absent", false));
    EXPECT_TRUE(cfg_is_on("absent", true));

    static CFG_SWITCH cached("dev_dump_hdr_read", false);
    EXPECT_FALSE(cached.is_on());
    cfg_set_value("dev_dump_hdr_read", "1");
    EXPECT_TRUE(cached.is_on());
    cfg_unset_value("dev_dump_hdr_read");
    EXPECT_FALSE(cached.is_on());

    unsetenv("VELCORA_INI");
}

TEST_F(HostSettings, TestSettingsBySectionAndKey) {
    EXPECT_FALSE(tst_has_value("General Section", "DEV_FAMILY_INFO_FILE"));
    EXPECT_EQ(tst_get_value("General Section", "DEV_FAMILY_INFO_FILE"), "");
    tst_set_value("General Section", "DEV_FAMILY_INFO_FILE", "a.part");
    EXPECT_EQ(tst_get_value("General Section", "DEV_FAMILY_INFO_FILE"), "a.part");
    EXPECT_EQ(tst_get_value("Other", "DEV_FAMILY_INFO_FILE"), "");
}

TEST(HostPaths, SplitJoinAndSimplify) {
    FIO_PATH p("/opt/velcora/ddb/fam/ddb_dev_pad.DDB");
    EXPECT_EQ(p.directory(), "/opt/velcora/ddb/fam");
    EXPECT_EQ(p.base_name(), "ddb_dev_pad");
    EXPECT_EQ(p.extension(), "DDB");
    EXPECT_EQ(p.full_path(), "/opt/velcora/ddb/fam/ddb_dev_pad.DDB");
    p.set_extension("txt");
    EXPECT_EQ(p.file_name(), "ddb_dev_pad.txt");

    FIO_PATH q("file.tar.gz");
    EXPECT_EQ(q.directory(), "");
    EXPECT_EQ(q.base_name(), "file.tar");
    EXPECT_EQ(q.extension(), "gz");
    EXPECT_EQ(FIO_PATH("/x/.hidden").base_name(), ".hidden");
    EXPECT_EQ(FIO_PATH("/top").directory(), "/");
    EXPECT_EQ(FIO_PATH("/top").full_path(), "/top");

    EXPECT_EQ(FIO_PATH("/a/b").join("c/d.e").full_path(), "/a/b/c/d.e");
    EXPECT_EQ(FIO_PATH("/a/b").join("/abs").full_path(), "/abs");
    EXPECT_EQ(FIO_PATH::simplify("/a//b/./c/../d/"), "/a/b/d");
    EXPECT_EQ(FIO_PATH::simplify("../x/../../y"), "../../y");
    EXPECT_EQ(FIO_PATH::simplify("/.."), "/");
}

TEST(HostPaths, FileSystemQueries) {
    TempDir dir;
    std::string f = dir.write("sub/one.txt", "abc");
    EXPECT_TRUE(FIO_FILE_SYSTEM::exists(FIO_PATH(f)));
    EXPECT_TRUE(FIO_FILE_SYSTEM::is_directory(dir.file("sub")));
    EXPECT_EQ(FIO_FILE_SYSTEM::file_size(f), 3);
    EXPECT_FALSE(FIO_FILE_SYSTEM::exists(dir.file("none")));
    EXPECT_FALSE(FIO_FILE_SYSTEM::exists(std::string()));
    EXPECT_EQ(FIO_FILE_SYSTEM::file_size(dir.file("none")), -1);
    EXPECT_TRUE(FIO_FILE_SYSTEM::remove(f));
    EXPECT_FALSE(FIO_FILE_SYSTEM::exists(f));
}

TEST(HostGeneral, InstallationRootAndStricmp) {
    std::string saved = std::getenv("VELCORA_ROOTDIR") ? std::getenv("VELCORA_ROOTDIR") : "";
    setenv("VELCORA_ROOTDIR", "/opt/vr", 1);
    EXPECT_EQ(gen_get_velcora_path(), "/opt/vr/");
    EXPECT_EQ(gen_get_ddb_root(), "/opt/vr/ddb");
    gen_set_velcora_path("/elsewhere/");
    EXPECT_EQ(gen_get_velcora_path(), "/elsewhere/");
    gen_set_velcora_path("");
    unsetenv("VELCORA_ROOTDIR");
    // The default is the installation beside the library, never the build tree's data.
    EXPECT_EQ(gen_get_velcora_path().rfind("/share/velcora/"), gen_get_velcora_path().size() - 15);
    EXPECT_NE(gen_get_velcora_path(), std::string(VELCORA_BUNDLED_ROOT) + "/");
    if (!saved.empty()) setenv("VELCORA_ROOTDIR", saved.c_str(), 1);

    EXPECT_EQ(gen_stricmp("ddb", "DDB"), 0);
    EXPECT_LT(gen_stricmp("abc", "ABD"), 0);
    EXPECT_GT(gen_stricmp("abcd", "ABC"), 0);
    EXPECT_EQ(gen_stricmp(nullptr, ""), 0);
}

TEST(HostModules, LoadFindAndReportErrors) {
    EXPECT_EQ(thr_drl_load("/nonexistent/libnothing.so"), nullptr);
    EXPECT_NE(std::string(thr_drl_get_error()), "");
    THR_DRL_HANDLE h = thr_drl_load("libz.so.1");
    ASSERT_NE(h, nullptr) << thr_drl_get_error();
    EXPECT_NE(thr_drl_find_function(h, "zlibVersion"), nullptr);
    EXPECT_EQ(std::string(thr_drl_get_error()), "");
    EXPECT_EQ(thr_drl_find_function(h, "no_such_function_here"), nullptr);
    EXPECT_NE(std::string(thr_drl_get_error()), "");
    EXPECT_TRUE(thr_drl_unload(h));
}
