/* Calls of shadeops: overloads have one row of the table, and a varying array is converted. */
surface shadeop_calls(float amount = grade(2))
{
    color tints[2];
    tints[0] = Cs;
    tints[1] = color(1, 0, 0);
    Oi = grade(s, amount);
    if (s > 0.5)
        Ci = blend(tints, 0.5);
}
