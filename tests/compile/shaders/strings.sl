// Strings in all kinds of storage, and functions with string parameters and results.
surface strings(string map = "wood.tx"; string words[2] = {"a", "b"}; string mark = format("%f", PI);
                output string said = concat("a", "b", words[1]);)
{
    string plain = "x";
    uniform string both[3] = {"p", "q\n", "\"r\""};
    varying string each = concat(map, words[1], mark, format("%f", u));
    varying string row[2];
    float i;
    for (i = 0; i < 2; i += 1)
        row[i] = concat(each, plain);
    plain = concat(plain, plain, both[2]);
    if (u > 0.5)
        each = format("%f %c %p %s", u, Cs, P, each);
    else
        each = row[0];
    said = concat(map, both[1]);
    printf("%s and %s\n", plain, each);
    if (match("a*", map) == 1 || each == plain && words[0] != "b")
        Ci = Cs;
    else
        Ci = 0;
}
