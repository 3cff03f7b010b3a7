// options: -E --zok_base_dir=Inputs/bad_name
// status: 4
// proves: a faulty line of the predefined macro file ends the run
