#include "kvr/util/list_file.h"
#include "tests/memory/temporary_directory.h"
#include "tests/util/working_directory.h"
#include "tests/windows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

using kvr_test::temporary_directory;
using kvr_test::working_directory;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// A library directory "lib" with the design files of the modules ram and fifo and the library ramlib.
class ListFile : public testing::Test {
protected:
    ListFile() {
        std::filesystem::create_directory("lib");
        for (const char* name : {"ram.tdf", "fifo.tdf", "ramlib.dll"}) {
            add(name, "");
        }
    }

    void add(const std::string& name, const std::string& content) {
        static_cast<void>(here.file("lib/" + name, content));
    }
    bool process(const std::string& list, bool key_by_tdf_path = false,
                 const std::string& directory = "lib") {
        add("modules.lst", list);
        return kvr_process_lst_file(directory, "modules.lst", libraries, origins, extras, key_by_tdf_path);
    }
    // The result of an accepted line with this library for the module ram.
    std::string library_of_ram(const std::string& library) {
        libraries.clear();
        EXPECT_TRUE(process("ram=" + library)) << library;
        return libraries["ram"];
    }

    temporary_directory here;
    working_directory inside{here.path("")};
    KVR_STRING_MAP libraries;
    KVR_STRING_MAP origins;
    KVR_STRING_MAP extras;
};

TEST_F(ListFile, CommentsAndEmptyLinesChangeNothing) {
    libraries["kept"] = "as it was";
    EXPECT_TRUE(process("// comment = x\n\n\r\n//\n\r anything\n"));
    EXPECT_THAT(libraries, ElementsAre(Pair("kept", "as it was")));
    EXPECT_THAT(origins, IsEmpty());
    EXPECT_THAT(extras, IsEmpty());
}

TEST_F(ListFile, EmptyFileSucceeds) {
    EXPECT_TRUE(process(""));
    EXPECT_THAT(libraries, IsEmpty());
}

TEST_F(ListFile, LibraryThatExistsIsGivenWithItsPath) {
    EXPECT_TRUE(process("ram=ramlib\n"));
    EXPECT_THAT(libraries, ElementsAre(Pair("ram", "lib/ramlib.dll")));
    EXPECT_THAT(origins, ElementsAre(Pair("lib/ram.tdf", "lib/modules.lst")));
    EXPECT_THAT(extras, IsEmpty());
}

TEST_F(ListFile, LibraryThatDoesNotExistIsGivenAsItStands) {
    std::filesystem::remove("lib/ramlib.dll");
    EXPECT_TRUE(process("ram=ramlib"));
    EXPECT_THAT(libraries, ElementsAre(Pair("ram", "ramlib")));
}

TEST_F(ListFile, ExtraTextIsKept) {
    EXPECT_TRUE(process("ram=ramlib;x\nfifo=ramlib;a;b\n"));
    EXPECT_THAT(extras, ElementsAre(Pair("fifo", "a;b"), Pair("ram", "x")));
    EXPECT_EQ(libraries["ram"], "lib/ramlib.dll");
}

TEST_F(ListFile, EmptyExtraTextIsNotKept) {
    extras["ram"] = "old";
    EXPECT_TRUE(process("ram=ramlib;"));
    EXPECT_THAT(extras, ElementsAre(Pair("ram", "old")));
}

TEST_F(ListFile, LineOfAnyOtherFormIsRefused) {
    for (const char* line :
         {"ram = ramlib", "a=b=c", "ram", "ram=", "=ramlib", "=", " ", "/", "ram=ram\tlib", "\tram=ramlib",
          "ram=ramlib;x=y", "ram=ramlib;x y", "ra;m=ramlib", ";=x", "ram=ramlib ", "/ /ram=ramlib"}) {
        EXPECT_FALSE(process(line)) << line;
    }
    EXPECT_THAT(libraries, IsEmpty());
    EXPECT_THAT(origins, IsEmpty());
}

TEST_F(ListFile, NulInAnEntryIsACharacterLikeAnyOther) {
    const std::string library("ra\0mlib", 7);
    EXPECT_TRUE(process("ram=" + library));
    EXPECT_THAT(libraries, ElementsAre(Pair("ram", library)));
}

TEST_F(ListFile, ExtraTextAloneStandsForALibrary) {
    EXPECT_TRUE(process("ram=;x"));
    EXPECT_THAT(libraries, ElementsAre(Pair("ram", "")));
    EXPECT_THAT(extras, ElementsAre(Pair("ram", "x")));
}

TEST_F(ListFile, ModuleWithoutADesignFileIsSkipped) {
    EXPECT_TRUE(process("rom=romlib;x\nram=ramlib\n"));
    EXPECT_THAT(libraries, ElementsAre(Pair("ram", "lib/ramlib.dll")));
    EXPECT_THAT(extras, IsEmpty());
}

TEST_F(ListFile, KeyMayBeThePathOfTheDesignFile) {
    EXPECT_TRUE(process("ram=ramlib;x", true));
    EXPECT_THAT(libraries, ElementsAre(Pair("lib/ram.tdf", "lib/ramlib.dll")));
    EXPECT_THAT(origins, ElementsAre(Pair("lib/ram.tdf", "lib/modules.lst")));
    EXPECT_THAT(extras, ElementsAre(Pair("lib/ram.tdf", "x")));
}

TEST_F(ListFile, ExtensionIsSearchedAfterTheFirstDotAndWithADotOfItsOwn) {
    add("ram.dll", "");
    EXPECT_EQ(library_of_ram("ram.dll"), "ram.dll"); // because ram.dll.dll does not exist
    add("ram.dll.dll", "");
    EXPECT_EQ(library_of_ram("ram.dll"), "lib/ram.dll.dll");
    add("ram..dll", "");
    EXPECT_EQ(library_of_ram("ram..dll"), "lib/ram..dll");
    add("ram..DLL", "");
    EXPECT_EQ(library_of_ram("ram..DLL"), "lib/ram..DLL");
    EXPECT_EQ(library_of_ram("ram..dllx"), "ram..dllx");
}

TEST_F(ListFile, FirstDotMayBeTheDirectorys) {
    EXPECT_TRUE(process("ram=ramlib", false, "./lib"));
    EXPECT_THAT(libraries, ElementsAre(Pair("ram", "./lib/ramlib.dll")));
    add("ram..dll.dll", "");
    EXPECT_TRUE(process("ram=ram..dll", false, "./lib"));
    EXPECT_THAT(libraries, ElementsAre(Pair("ram", "./lib/ram..dll.dll")));
}

TEST_F(ListFile, SeparatorOfTheDirectoryIsNotDoubled) {
    EXPECT_TRUE(process("ram=ramlib", true, "lib/"));
    EXPECT_THAT(libraries, ElementsAre(Pair("lib/ram.tdf", "lib/ramlib.dll")));
}

TEST_F(ListFile, EqualKeysAreOverwrittenAndKeepTheirFirstSpelling) {
    add("RAM.tdf", "");
    EXPECT_TRUE(process("ram=first\nRAM=second\n"));
    EXPECT_THAT(libraries, ElementsAre(Pair("ram", "second")));
}

TEST_F(ListFile, CarriageReturnAtTheEndBelongsToTheEntry) {
    EXPECT_TRUE(process("ram=ramlib\r\nfifo=ramlib;x\r\n"));
    EXPECT_THAT(libraries, ElementsAre(Pair("fifo", "lib/ramlib.dll"), Pair("ram", "ramlib\r")));
    EXPECT_THAT(extras, ElementsAre(Pair("fifo", "x\r")));
}

TEST_F(ListFile, RefusedLineEndsTheWorkAndKeepsWhatWasRead) {
    EXPECT_FALSE(process("ram=ramlib\nno entry\nfifo=ramlib\n"));
    EXPECT_THAT(libraries, ElementsAre(Pair("ram", "lib/ramlib.dll")));
}

TEST_F(ListFile, LineOf100CharactersIsRefused) {
    EXPECT_TRUE(process("ram=" + std::string(95, 'l')));
    EXPECT_FALSE(process("ram=" + std::string(96, 'l')));
    EXPECT_TRUE(process("//" + std::string(97, 'c') + "\nram=ramlib\n"));
    EXPECT_FALSE(process("//" + std::string(98, 'c') + "\n"));
    EXPECT_FALSE(process("\r" + std::string(99, 'c') + "\n"));
    EXPECT_FALSE(process(std::string(5000000, 'l')));
}

TEST_F(ListFile, NamesMayHoldBytesAbove127) {
    if (kvr_test::is_windows) {
        GTEST_SKIP() << "names of Windows are characters, of which these bytes are none";
    }
    add("\xE9.tdf", "");
    EXPECT_TRUE(process("\xE9=\xFF"));
    EXPECT_THAT(libraries, ElementsAre(Pair("\xE9", "\xFF")));
}

TEST_F(ListFile, FileThatCannotBeOpenedFails) {
    EXPECT_FALSE(kvr_process_lst_file("lib", "none.lst", libraries, origins, extras, false));
    EXPECT_FALSE(kvr_process_lst_file("none", "modules.lst", libraries, origins, extras, false));
    EXPECT_FALSE(kvr_process_lst_file("lib", "", libraries, origins, extras, false));
}

TEST_F(ListFile, EmptyDirectoryIsOutOfRange) {
    EXPECT_THROW(kvr_process_lst_file("", "modules.lst", libraries, origins, extras, false),
                 std::out_of_range);
}

TEST_F(ListFile, FileThatCannotBeReadToItsEndFails) {
    // The memory of a process can be opened, but reading fails at unmapped addresses.
    EXPECT_FALSE(kvr_process_lst_file("/proc/self", "mem", libraries, origins, extras, false));
}

} // namespace
