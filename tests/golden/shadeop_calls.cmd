mkdir lib && cc -shared -fPIC -o lib/ops-1.so ops.c && shaderqx --dont-use-shadeops -Ilib shadeop_calls.sl; shaderqx -Ilib shadeop_calls.sl
