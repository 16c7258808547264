#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "helpers/TemporaryFolder.h"

/// One shader of `examples/`.
struct Example {
    std::string name;  // path below the folder, without extension
    std::filesystem::path source;
    std::string options;  // that it has to be compiled with, from the comment in its first line

    [[nodiscard]] bool HasByteCode() const { return options.find("--dso") == std::string::npos; }
};

/// A copy of the examples, beside which the program may put its files. Those that need a library of
/// shadeops are left to its tests.
class ExampleFiles {
public:
    ExampleFiles();

    /// In the order of their names.
    [[nodiscard]] const std::vector<Example>& All() const { return m_examples; }
    /// Fails the test that is running, and ends it, if there is none of that name.
    [[nodiscard]] const Example& Named(const std::string& name) const;

    /// What the program says when it compiles an example, with `options` before the example's. Each
    /// example goes through the preprocessor only once.
    [[nodiscard]] static std::string Messages(const Example& example, const std::string& options);
    /// The byte-code file of an example that has one; any report fails the test that is running.
    [[nodiscard]] static std::string ByteCode(const Example& example, int level);
    /// The preprocessed source.
    [[nodiscard]] static std::string Preprocessed(const Example& example);

private:
    /// The path of the preprocessed source, which says where each line comes from.
    [[nodiscard]] static std::filesystem::path Prepare(const Example& example);
    [[nodiscard]] static std::string Run(const std::string& arguments);

    TemporaryFolder m_folder;
    std::vector<Example> m_examples;
};
