// options: --c99
// proves: preprocessing numbers stay whole in the output, whatever they would mean
1.2.3 0x1e+1 1e+x .5e-.5 0b12 1a_b
