/* Strings: concatenated, formatted, compared and printed. */
surface texts(string first = "left"; output string title = ""; output varying float fits = 0)
{
    uniform string both = concat(first, "-", "right");

    title = format("%s is %f by %f", both, 2, 0.5);
    printf("%s\n", title);
    if (match("^left", both) == 1)
        fits += 1;
    if (both != concat(first, "right"))
        fits += 2;
    if (format("%s!", first) == "left!")
        fits += 4;

    Oi = 1;
    Ci = fits / 7;
}
