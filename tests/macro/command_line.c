// options: -P -DA -DB= -DC=x+y '-DF(a,b)=a##b' -DD=1 -UD -UE -DE=2 -DG=1 -DG=2
// proves: definitions of the command line: without a value, empty, with parameters, undone, replaced
A [B] C F(p,q) D E G
