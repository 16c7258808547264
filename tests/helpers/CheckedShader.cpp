#include "helpers/CheckedShader.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <utility>

#include "frontend/SlcParseCode.h"
#include "frontend/SlcStmtNodes.h"
#include "semantics/SlcDeleteTree.h"
#include "semantics/SlcSemantics.h"
#include "support/SlcDiagnostics.h"

namespace {

constexpr const char* k_file = "test.sl";

/// Returns a temporary file with a line marker and the source, in the form of preprocessed text.
std::unique_ptr<std::FILE, int (*)(std::FILE*)> OpenText(const std::string& source)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), &std::fclose);
    const std::string text = "# 1 \"" + std::string(k_file) + "\"\n" + source + "\n";
    std::fwrite(text.data(), 1, text.size(), file.get());
    std::rewind(file.get());
    return file;
}

}  // namespace

std::unique_ptr<SlcDefinitionsNode> ParseText(const std::string& source, bool strict)
{
    return ParseCode(OpenText(source).get(), strict);
}

CheckedShader::CheckedShader(const std::string& source, SlcOptionsControl options, int warningLevel)
    : m_options(std::move(options))
{
    SetWarningLevel(warningLevel);
    testing::internal::CaptureStderr();
    Check(source);
    m_output = testing::internal::GetCapturedStderr();
    SetWarningLevel(1);
}

CheckedShader::~CheckedShader()
{
    SlcDeleteTree()(m_root.get());
}

void CheckedShader::Check(const std::string& source)
{
    try {
        m_root = ParseText(source, m_options.m_strict);
        SlcSemantics(m_root.get(), m_options);
        m_accepted = true;
    } catch (const SlcCompilationError&) {
        m_accepted = false;
    }
}

std::string CheckedShader::Reports() const
{
    const std::string prefix = std::string(k_file) + ":";
    std::istringstream lines(m_output);
    std::string reports;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(prefix))
            line.erase(0, prefix.size());
        if (line.empty() || line.starts_with(" In function "))
            continue;
        reports += reports.empty() ? line : "\n" + line;
    }
    return reports;
}

SlcDefinitionNode* CheckedShader::Definition(std::string_view name) const
{
    for (const auto& definition : m_root->GetDefinitions()) {
        const auto* shader = dynamic_cast<const SlcShaderDefNode*>(definition.get());
        const auto* function = dynamic_cast<const SlcFuncDefNode*>(definition.get());
        if ((shader && shader->GetIdent()->GetName() == name) ||
            (function && function->GetIdent()->GetName() == name))
            return definition.get();
    }
    ADD_FAILURE() << "no definition of " << name;
    return nullptr;
}
