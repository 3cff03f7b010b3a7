// options: --toolversion
// proves: title in forty characters, version, build number
