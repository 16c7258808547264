#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "helpers/TemporaryFolder.h"

/// One shader of `examples/`.
struct Example {
    std::string name;  // path in the folder, without extension
    std::filesystem::path source;
    std::string options;  // which it requires, from the comment in its first line

    [[nodiscard]] bool HasByteCode() const { return options.find("--dso") == std::string::npos; }
};

/// Copies the examples to a temporary folder, since `-E` writes its result beside the source, and
/// sets the environment variables of the compiler. Examples that need a library of shadeops are
/// left out; the tests of that library run them.
class ExampleFiles {
public:
    ExampleFiles();

    /// Returns the examples, sorted by name.
    [[nodiscard]] const std::vector<Example>& All() const { return m_examples; }
    /// Throws if there is no example of that name, which fails the running test.
    [[nodiscard]] const Example& Named(const std::string& name) const;

    /// Returns the messages of the compiler for an example, with `options` before those of the
    /// example; after "refused" if it fails. Each example is preprocessed only once.
    [[nodiscard]] static std::string Messages(const Example& example, const std::string& options);
    /// Returns the byte-code file of an example that has one; any report fails the running test.
    [[nodiscard]] static std::string ByteCode(const Example& example, int level);
    /// Returns the preprocessed source.
    [[nodiscard]] static std::string Preprocessed(const Example& example);

private:
    /// Returns the path of the preprocessed source, whose line markers say where each line comes
    /// from. Preprocesses it if that has not been done yet.
    [[nodiscard]] static std::filesystem::path Prepare(const Example& example);
    [[nodiscard]] static std::string Run(const std::string& arguments);

    TemporaryFolder m_folder;
    std::vector<Example> m_examples;
};
