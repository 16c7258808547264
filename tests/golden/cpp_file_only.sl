/* With -c the C++ file is named after the shader, and the C++ compiler does not run. */
surface glow()
{
    Ci = Cs;
}
