/* Runs the SQL file named on the command line against a database in memory and prints every row. */
#include <stdio.h>
#include <stdlib.h>
#include "sqlite3.h"

static int print_row(void *unused, int count, char **values, char **names)
{
  int i;
  (void)unused;
  (void)names;
  for (i = 0; i < count; i++) printf("%s%s", i ? "|" : "", values[i] ? values[i] : "NULL");
  printf("\n");
  return 0;
}

int main(int argc, char **argv)
{
  sqlite3 *db;
  char *message = 0, *text;
  long size;
  int status;
  FILE *f = argc > 1 ? fopen(argv[1], "rb") : 0;
  if (!f) return 2;
  fseek(f, 0, SEEK_END);
  size = ftell(f);
  rewind(f);
  text = malloc(size + 1);
  text[fread(text, 1, size, f)] = 0;
  fclose(f);
  if (sqlite3_open(":memory:", &db) != SQLITE_OK) return 3;
  status = sqlite3_exec(db, text, print_row, 0, &message);
  if (status != SQLITE_OK) printf("error %d: %s\n", status, message);
  sqlite3_close(db);
  free(text);
  return status;
}
