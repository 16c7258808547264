/* An endless loop is reported wherever it is. */
surface infinite_loop(float k = 1)
{
    float i = 0;
    uniform float j;
#ifdef BEHIND_LOOP
    for (j = 0; j < 3; j += 1)
        i += j;
#endif
#ifdef BEHIND_IF
    if (k > 2)
        i += 3;
#endif
    while (1 > 0)
        i += 1;
    Ci = i;
}
