/* Tables of shadeops, most of them faulty. No shader runs with this library. */

#include "QxShadeop.h"

#define FUNCTION(name)                                                                             \
    QX_SHADEOP_EXPORT void name(void) { }
FUNCTION(good)
FUNCTION(start)
FUNCTION(stop)
FUNCTION(mixed)
FUNCTION(refused)
FUNCTION(nulls)
FUNCTION(endless)
FUNCTION(wild)

QX_SHADEOP_TABLE(good) = {
    {"float good(float)", "start", "stop"},
    {"color good(point, string[])", "", ""},
    {"normal good(vector[3])", "", ""},
    QX_SHADEOP_END,
};

QX_SHADEOP_TABLE(mixed) = {
    {"void mixed(float)", "", ""},
    {"float other(float)", "", ""},
    {"float mixed()", "", ""},
    {"float mixed(float)", "", ""},
    {"float mixed(float) of mine", "", ""},
    QX_SHADEOP_END,
};

QX_SHADEOP_TABLE(refused) = {
    {"matrix refused(float)", "", ""},
    QX_SHADEOP_END,
};

QX_SHADEOP_TABLE(empty) = {QX_SHADEOP_END};

/* A null for the start or the end means that there is no such function; a null for the declaration
   ends the table. */
QX_SHADEOP_TABLE(nulls) = {
    {"float nulls(float)", 0, 0},
    {0, "start", "stop"},
    {"float nulls(color)", "", ""},
};

/* A table of one record without an end. The data after it is no record. */
static const struct {
    QxShadeop record;
    QxShadeop other;
} endless_and_more __attribute__((used)) = {{"float endless(float)", "", ""},
                                            {(const char*)1, (const char*)1, (const char*)1}};
__asm__(".globl endless_shadeops\n"
        ".set endless_shadeops, endless_and_more\n"
        ".type endless_shadeops, @object\n"
        ".size endless_shadeops, 24\n");

/* A table with names of functions that the library lacks; `datum` is a variable. */
QX_SHADEOP_TABLE(bare) = {
    {"float bare(float)", "datum", "absent"},
    {"float bare(color)", "start", "absent"},
    QX_SHADEOP_END,
};
QX_SHADEOP_EXPORT int datum = 1;

/* A symbol that is too small for a record. */
QX_SHADEOP_EXPORT const char* const pointer_shadeops = "float pointer(float)";

/* Symbols that are no tables, and tables with texts outside of this library. */
QX_SHADEOP_EXPORT void code_shadeops(void) { }

QX_SHADEOP_EXPORT const char text_shadeops[] = "float text(float), which is no table but long enough";

QX_SHADEOP_TABLE(wild) = {
    {"float wild(float)", "", ""},
    {"float wild(color)", (const char*)1, ""},
    {"float wild(point)", "", ""},
};
QX_SHADEOP_TABLE(lost) = {{(const char*)-2, "", ""}, QX_SHADEOP_END};
