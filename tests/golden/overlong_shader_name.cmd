name=$(head -c 300 /dev/zero | tr '\0' a)
echo "surface $name() { Ci = Cs; }" >a.sl
for back_end in --int --dso; do shaderqx $back_end a.sl 2>&1 | sed "s/$name/NAME/"; done; status=$?; ls; exit $status
