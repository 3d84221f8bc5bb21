/* Replies to each line of standard input, as `next-steps batch` does: c_batch OPTIONS */
#define _POSIX_C_SOURCE 200809L /* for getline */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "next_steps_c.h"

int main(int count, char** arguments) {
  const char* options = count == 2 ? arguments[1] : "{}";
  struct next_steps_session* session = next_steps_open(options, strlen(options));
  char* line = NULL;
  size_t room = 0;
  ssize_t size;
  while (session != NULL && (size = getline(&line, &room, stdin)) > 0) {
    size_t reply_size = 0;
    if (line[size - 1] == '\n') --size;
    char* reply = next_steps_reply(session, line, (size_t)size, &reply_size);
    if (reply == NULL) break;
    fwrite(reply, 1, reply_size, stdout);
    putchar('\n');
    next_steps_free(reply);
  }
  fputs(next_steps_last_error(), stderr);
  next_steps_close(session);
  free(line);
  return next_steps_last_error()[0] != '\0' || fflush(stdout) != 0;
}
