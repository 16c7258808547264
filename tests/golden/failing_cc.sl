/* The C++ file stays for a look when the C++ compiler refuses it. */
surface failing_cc()
{
    Ci = Cs;
}
