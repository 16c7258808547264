// Strings that grow in a loop, and formats with arguments of all types, with too few and too many.
surface texts(string shape = "%f|%d|%s|%c|%p|%m|%%|%"; output string said = "")
{
    uniform matrix frame = translate(matrix "shader" 1, (1, 2, 3));
    uniform string grown = "ab";
    varying string each;
    uniform float i;

    for (i = 0; i < 6; i += 1)
        grown = concat(grown, grown, format("%d", i));
    said = format(shape, i, 1e30, grown, color (0, 1, -1), point (1, 2, 3), frame);
    said = format(said, said);
    each = format("%p %c %f %s", N, Cs, u, said);
    if (v > 0.5)
        each = concat(each, said, format("%m", frame * matrix u));
    printf("%s %f %f\n", each, v);
    printf(shape, "only", "texts");
    Ci = each == said ? 1 : 0;
    Oi = Os;
}
