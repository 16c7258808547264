/* Each fault is reported at its line, the function is named once, and the counts are printed last. */
surface refused_source(float Kd = 0.5)
{
    color shade = Kd * brightness;
    Ci = shade + undefined(N);
}
