

cplusplus 199711L bool 1 wchar 1 array 1 exceptions __EXCEPTIONS
rtti __rtti_enabled__ text __VERSION__
