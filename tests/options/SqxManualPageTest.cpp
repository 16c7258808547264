// Writes the page of a program whose texts contain characters that have a meaning in man(7).

#include "manual/SqxManualPage.h"

#include <gtest/gtest.h>

TEST(SqxManualPage, EscapesTexts)
{
    static constexpr std::string_view description[] = {
        "'Both' kinds: a-b\\c. A word that begins with a dot stands at the start of .sqx lines",
        ".sl first"};
    static constexpr SqxOption options[] = {{"-o, --output", "DIR", ".sqx files go to 'DIR'"}};
    static constexpr SqxEntry files[] = {{".sqxrc", "'settings'"}};
    const SqxProgram program = {
        "probe", "shows what a-b\\c is", "[-o DIR]", description, options, {}, files, {}, {}, ""};
    const SqxProgram* const all[] = {&program};
    const std::string page = SqxManualPage(program, all);
    EXPECT_EQ(page.substr(page.find('\n')),
              R"(
.SH NAME
probe \- shows what a\-b\ec is
.SH SYNOPSIS
.B probe
[\-o DIR]
.SH DESCRIPTION
\&'Both' kinds: a\-b\ec. A word that begins with a dot stands at the start of
\&.sqx lines
.PP
\&.sl first
.SH OPTIONS
.TP
\fB\-o\fR, \fB\-\-output\fR \fIDIR\fR
\&.sqx files go to \&'DIR'
.SH FILES
.TP
\fB\&.sqxrc\fR
\&'settings'
.SH SEE ALSO

)");
}
