// options: --zok_base_dir=Inputs/base -P
// proves: the predefined macro file below the base directory is read, mode by mode
FROM_FILE : IN_GNU OUTSIDE_GNU IN_STRICT IN_C
