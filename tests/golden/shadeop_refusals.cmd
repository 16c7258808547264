mkdir lib && cc -shared -fPIC -o lib/ops.so ops.c && echo 'no library' >lib/text.so && head -c 1000 lib/ops.so >lib/cut.so && shaderqx -Ilib shadeop_refusals.sl
