for level in 0 1 2; do
    echo "-w$level"
    shaderqx -w$level warning_levels.sl && rm stripes.sqx
done
