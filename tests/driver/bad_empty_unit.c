/* options: --strict */
/* proves: a unit without a declaration is an error in strict mode */
/* expect: error empty_translation_unit */
