// proves: a base that lies too far from the start of its class
struct Big { char c[0x7fffff]; };
struct Small { int s; };
struct Far : Big, Small { };              // expect: error base_class_offset_too_large
