#include "preprocessor/SlcPreprocessorRun.h"

#include <utility>

void SlcPreprocessorRun::Error(const SlcSourceToken& token, std::string text)
{
    m_isGood = false;
    SlcPreprocessorReport report;
    report.text = std::move(text);
    Report(token, std::move(report));
}

void SlcPreprocessorRun::Warning(const SlcSourceToken& token, int level, std::string text)
{
    SlcPreprocessorReport report;
    report.isError = false;
    report.level = level;
    report.text = std::move(text);
    Report(token, std::move(report));
}

void SlcPreprocessorRun::Report(const SlcSourceToken& token, SlcPreprocessorReport report)
{
    if (m_reports++ < k_mostReports)
        m_reporter(token, std::move(report));
}

void SlcPreprocessorRun::Stop(const SlcSourceToken& token, std::string text)
{
    Error(token, std::move(text));
    throw SlcPreprocessorStop();
}

std::string_view SlcPreprocessorRun::Keep(std::string text)
{
    const std::size_t length = text.size();
    m_texts.push_back(std::move(text) + '\n');
    return std::string_view(m_texts.back()).substr(0, length);
}

void SlcPreprocessorRun::Spend(std::size_t work, const SlcSourceToken& token, std::string_view text)
{
    if (work > m_allowed)
        Stop(token, std::string(text));
    m_allowed -= work;
}
