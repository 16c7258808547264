// Patterns with most syntax elements, constant and computed at run time.
surface patterns(string text = "a42b, wood.tex"; string pattern = "^a[0-9]+(b|c)?"; float repeats = 3)
{
    uniform float hits = match("^[[:alpha:]_]{2,3}[^a-c]*$", text) + match("(a|b.*){1,4}x+?", text);
    varying string each = format("%f-%s", u, text);
    uniform string grown = pattern;
    uniform float i;

    for (i = 0; i < repeats; i += 1)
        grown = concat("(", grown, "|", grown, "){0,9}");
    hits += match(grown, text);
    if (match("\\<\\w+\\b.*[.]tex$", text) == 1)
        Ci = match(pattern, each);
    else
        Ci = match(format("%s%d", each, 7 * v), text);
    Oi = hits + match("\\d\\D\\s\\S\\W\\B\\>", each);
}
