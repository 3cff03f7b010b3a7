// options: -P
// proves: comments become a blank, over lines too
int/**/a/* b */; // gone
int /* over
several
lines */ c; "/* in a string */" '//' x//**/
y/ *z; a /* * / ** */ b
