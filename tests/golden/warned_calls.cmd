shaderqx -w2 warned_calls.sl 2>&1 && rm warned_calls.sqx
