for place in ALONE BEHIND_LOOP BEHIND_IF; do echo $place; shaderqx -O3 -D$place infinite_loop.sl; done 2>&1 && rm infinite_loop.sqx
