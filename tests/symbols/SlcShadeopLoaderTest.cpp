#include "symbols/SlcShadeopLoader.h"

#include <elf.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "frontend/SlcCallNodes.h"
#include "helpers/TemporaryFolder.h"
#include "symbols/TypedArgs.h"

namespace {

/// Installs copies of the library faulty.c in a temporary folder, and loads shadeops from them.
class ShadeopLoader : public testing::Test {
protected:
    ShadeopLoader() { m_options.m_searchDirs = {"."}; }

    static void Install(const std::string& path)
    {
        const auto folder = std::filesystem::path(path).parent_path();
        if (!folder.empty())
            std::filesystem::create_directories(folder);
        std::filesystem::copy_file(SLC_FAULTY_SHADEOPS, path);
    }

    /// Loads the shadeops of a name. Returns the reports, then the added overloads that return a
    /// float, a color or a type of the point family, one per line.
    std::string Load(const std::string& name)
    {
        SlcShadeopLoader loader(MakeShared<SlcSemanticError>(), &m_options, {nullptr, nullptr});
        return Load(loader, name);
    }

    static std::string Load(SlcShadeopLoader& loader, const std::string& name)
    {
        SlcProcArgsNode node{SlcPosition()};
        const auto table = MakeShared<SlcSymbolTable>();
        bool isFound = false;
        std::string text = ReportsOf([&] { isFound = loader.Load(&node, Ident(name), *table); });
        for (SlcTypeNode* type : {T::AFloat(), T::AColor(), T::ANormal()})
            for (const auto& entry : table->GetFuncEntrys(Ident(name), type))
                text += TextOf(*CheckCast<SlcFuncDSOSymbolEntry>(entry));
        EXPECT_EQ(isFound, text.find("->") != std::string::npos) << text;
        return text;
    }

    /// Returns the expected result of `Load("endless")` for one library, with its warning.
    static std::string Endless(const std::string& folder, const std::string& library)
    {
        return ":0: WARNING: 'endless_shadeops' has no record that ends it (" + folder + "/" +
               library + ".so)\n" + library + "_so: float -> float [,]\n";
    }

    SlcOptionsControl m_options;
    TemporaryFolder m_folder;

private:
    static std::string TextOf(const SlcFuncDSOSymbolEntry& entry)
    {
        return entry.GetKey() + ": " + ::TextOf(entry.GetArgTypes()) + " -> " +
               entry.GetReturnType()->ToString() + " [" + entry.GetInit()->GetName() + "," +
               entry.GetCleanup()->GetName() + "]\n";
    }
};

TEST_F(ShadeopLoader, AddsEveryOverload)
{
    Install("ops.so");
    EXPECT_EQ(Load("good"), "ops_so: float -> float [start,stop]\n"
                            "ops_so: point string[] -> color [,]\n"
                            "ops_so: vector[3] -> normal [,]\n");
    EXPECT_EQ(Load("empty"), "");
    EXPECT_EQ(Load("unknown"), "");
}

TEST_F(ShadeopLoader, WarnsOfEachRecordThatIsRefused)
{
    Install("ops.so");
    const std::string mixed = Load("mixed");
    const char* const warnings[] = {
        "WARNING: Wrong return type in table (./ops.so). Declaration: void mixed(float) .\n",
        "WARNING: Invalid method ID (./ops.so). Declaration: float other(float) .\n",
        "WARNING: Invalid method signature (./ops.so). Declaration: float mixed() .\n",
        "WARNING: Invalid method signature (./ops.so). Declaration: float mixed(float) of mine .\n",
    };
    std::size_t at = 0;
    for (const char* warning : warnings)
        EXPECT_NE(at = mixed.find(warning, at), std::string::npos) << warning << mixed;
    EXPECT_TRUE(mixed.ends_with("\nops_so: float -> float [,]\n")) << mixed;
    EXPECT_NE(Load("refused").find("Wrong return type"), std::string::npos);
}

TEST_F(ShadeopLoader, ReadsNoFurtherThanTheEndOfATable)
{
    Install("ops.so");
    EXPECT_EQ(Load("nulls"), "ops_so: float -> float [,]\n");
    EXPECT_EQ(Load("endless"), Endless(".", "ops"));
    EXPECT_EQ(Load("pointer"),
              ":0: WARNING: 'pointer_shadeops' has no record that ends it (./ops.so)\n");
}

TEST_F(ShadeopLoader, ReportsFunctionsThatTheLibraryLacks)
{
    Install("ops.so");
    const std::string bare = Load("bare");
    for (const char* missing : {"bare", "absent", "datum"})
        EXPECT_NE(bare.find("ERROR: Library './ops.so' does not define '" + std::string(missing) +
                            "', which shadeop 'bare' needs\n"),
                  std::string::npos)
            << bare;
}

/// The process would end if the search ran the library's constructor.
TEST_F(ShadeopLoader, RunsNoCodeOfALibrary)
{
    TemporaryFolder::Write("loud.c", "#include <stdlib.h>\n__attribute__((constructor)) static "
                                     "void loud(void) { abort(); }\n");
    ASSERT_EQ(std::system("cc -shared -fPIC -o loud.so loud.c"), 0);
    EXPECT_EQ(Load("absent"), "");
}

TEST_F(ShadeopLoader, FollowsNoPointerOutOfTheLibrary)
{
    Install("ops.so");
    EXPECT_EQ(Load("code"), ":0: WARNING: 'code_shadeops' is no table of shadeops (./ops.so)\n");
    EXPECT_EQ(Load("text"), ":0: WARNING: 'text_shadeops' holds what is no text (./ops.so)\n");
    EXPECT_EQ(Load("wild"), ":0: WARNING: 'wild_shadeops' holds what is no text (./ops.so)\n"
                            "ops_so: float -> float [,]\n");
    EXPECT_EQ(Load("lost"), ":0: WARNING: 'lost_shadeops' holds what is no text (./ops.so)\n");
}

TEST_F(ShadeopLoader, UsesTheLibrariesOfTheFirstDirectorySortedByName)
{
    for (const char* path : {"two/d.so", "one/b.dll", "one/c.so.1~", "one/a.so", "one/notes.txt"})
        Install(path);
    std::filesystem::create_directories("one/folder.so");
    ASSERT_EQ(::mkfifo("one/pipe.so", 0600), 0);
    std::filesystem::create_symlink("nowhere", "one/link.so");
    TemporaryFolder::Write("one/text.so", "no library");
    m_options.m_searchDirs = {"", ".", "missing", "one", "two"};
    const std::string found = Load("endless");
    EXPECT_TRUE(found.ends_with("\na_so: float -> float [,]\n"
                                "b_dll: float -> float [,]\n"
                                "c_2e_so_1_7e_: float -> float [,]\n"))
        << found;
    EXPECT_NE(found.find("WARNING: Libraries 'one/a.so' and 'one/b.dll' both declare 'float "
                         "endless(float)': the last is called\n"),
              std::string::npos)
        << found;
}

TEST_F(ShadeopLoader, OpensLibrariesOnceForAName)
{
    Install("ops.so");
    SlcShadeopLoader loader(MakeShared<SlcSemanticError>(), &m_options, {nullptr, nullptr});
    const std::string first = Load(loader, "endless");
    EXPECT_EQ(Load(loader, "absent"), "");
    std::filesystem::remove("ops.so");
    EXPECT_TRUE(first.ends_with(Load(loader, "endless"))) << first;
    EXPECT_EQ(Load(loader, "absent"), "");
}

TEST_F(ShadeopLoader, SkipsTruncatedAndForeignLibraries)
{
    Install("whole.bin");
    std::string bytes = TemporaryFolder::Read("whole.bin");
    for (std::size_t size = 0; size < bytes.size(); size += size < 1024 ? 16 : 512) {
        TemporaryFolder::Write("cut.so", bytes.substr(0, size));
        const std::string found = Load("endless");
        EXPECT_TRUE(found.empty() || found.find("(./cut.so)") != std::string::npos)
            << size << found;
    }
    TemporaryFolder::Write("cut.so", bytes.substr(0, bytes.size() / 8));
    EXPECT_EQ(Load("endless"), "");
    std::filesystem::remove("cut.so");

    struct Patch {
        std::size_t place;
        char value;
    };
    static const Patch patches[] = {
        {EI_CLASS, ELFCLASS32},
        {EI_DATA, ELFDATA2MSB},
        {offsetof(Elf64_Ehdr, e_machine), EM_MIPS},
        {offsetof(Elf64_Ehdr, e_type), ET_REL},
        {offsetof(Elf64_Ehdr, e_phoff) + 5, 1},
    };
    for (const Patch& patch : patches) {
        std::string foreign = bytes;
        foreign[patch.place] = patch.value;
        TemporaryFolder::Write("foreign.so", foreign);
        EXPECT_EQ(Load("endless"), "") << patch.place;
    }
}

TEST(SlcFuncDSOSymbolEntry, EncodesFileNamesForC)
{
    struct Case {
        const char* name;
        const char* result;
    };
    static const Case cases[] = {
        {"noise.so", "noise_so"},       {"my-ops_2.so.1", "my_2d_ops_5f_2_2e_so_1"},
        {"\xc3\xa4.so", "_c3__a4__so"}, {"ops.so~", "ops_so_7e_"},
        {"ops.so_1", "ops_so_1"},       {"ops", "ops"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(SlcFuncDSOSymbolEntry::FileNameAsCId(c.name), c.result) << c.name;
}

}  // namespace
