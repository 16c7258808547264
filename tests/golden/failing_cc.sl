/* The C++ file is kept if the C++ compiler refuses it. */
surface failing_cc()
{
    Ci = Cs;
}
