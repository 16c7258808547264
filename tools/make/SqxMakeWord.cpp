//     matte.sqx: matte.sl include/noise.h
//
// Tested by tests/make/run.sh and tests/preprocessor.

#include "make/SqxMakeWord.h"

std::string SqxMakeWord(const std::string& path)
{
    std::string escaped;
    for (const char c : path) {
        if (c == ' ' || c == '#')
            escaped += '\\';
        if (c == '$')
            escaped += '$';
        escaped += c;
    }
    return escaped;
}

std::string SqxMakeRule(const std::vector<std::string>& targets,
                        const std::vector<std::string>& files)
{
    std::string rule;
    for (const std::string& target : targets)
        rule += (rule.empty() ? "" : " ") + target;
    rule += ":";
    for (const std::string& file : files)
        rule += (file == files.front() ? " " : " \\\n ") + SqxMakeWord(file);
    return rule + "\n";
}
