# Each command waits until both runs have come to it: neither may read or overwrite a file of the other's.
printf 'surface concurrent_runs() { Ci = RESULT; }\n' >a.sl
meet='touch met.$stage.$run; while [ ! -e met.$stage.1 ] || [ ! -e met.$stage.2 ]; do sleep 0.01; done'
export SLC_CPP_COMMAND='stage=cpp; cc -E -P -x c $cpp_options "$input_file" > "$cpp_result"; '$meet
export SLC_CC_COMMAND='stage=cc; '$meet'; cp "$cc_input_file" "$output_dir/$output_file"; stage=built; '$meet
mkdir out.1 out.2
for kind in --int --dso; do
    run=1 timeout 60 shaderqx -DRESULT=0.3 -d out.1 $kind a.sl &
    run=2 timeout 60 shaderqx -DRESULT=0.7 -d out.2 $kind a.sl
    wait $!
    grep -oE '[37]\.0+e-01|0\.[37]' out.[12]/*.sqx
    rm met.*
done
find . | sort
rm -r out.[12]
