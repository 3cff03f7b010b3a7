// options: --no_gcc
// proves: joining plain and wide strings is refused outside the modes that allow it
void *a = "a" L"b";        // expect: error mixed_string_concatenation
