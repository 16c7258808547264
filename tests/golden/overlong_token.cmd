{ printf '# 1 "overlong_token.sl"\nsurface '; head -c 8192 /dev/zero | tr '\0' a; echo '() {}'; } >overlong_token.sl
SLC_CPP_COMMAND='cp $input_file $cpp_result' shaderqx overlong_token.sl
