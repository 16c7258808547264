#pragma once

#include <cstdlib>
#include <cstring>
#include <regex.h>

/// The regular expression that was asked for last, compiled. Most calls of match() ask for the same
/// one at all points, and to compile it costs far more than to look for it.
class QxPattern {
public:
    QxPattern() = default;
    QxPattern(const QxPattern&) = delete;
    QxPattern& operator=(const QxPattern&) = delete;
    ~QxPattern() { Free(); }

    /// Whether the text holds a match of the POSIX extended regular expression; not for a malformed
    /// one.
    bool Match(const char* expression, const char* text)
    {
        if (!m_expression || std::strcmp(m_expression, expression) != 0) {
            Free();
            m_expression = strdup(expression);
            m_compiles = regcomp(&m_compiled, expression, REG_EXTENDED | REG_NOSUB) == 0;
        }
        return m_compiles && regexec(&m_compiled, text, 0, nullptr, 0) == 0;
    }

private:
    void Free()
    {
        if (m_compiles)
            regfree(&m_compiled);
        m_compiles = false;
        std::free(m_expression);
        m_expression = nullptr;
    }

    char* m_expression = nullptr;  // null: none yet
    regex_t m_compiled;            // set if the expression compiles
    bool m_compiles = false;
};
