/* options: -P --strict --c -UD -DD=1 */
/* proves: outside the GNU modes all definitions come before all undefinitions */
D
