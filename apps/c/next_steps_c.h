/* The library for other languages: requests and replies as JSON text, in C99.
 *
 * Purpose: next_steps_reply() takes a request as `next-steps batch` does and returns the same reply, without
 * a process and a pipe. `next-steps batch --help` describes both.
 *
 * Ownership: the caller closes a session and frees a reply. What is passed in is only read, and only during
 * the call. A text is given with its size in bytes; it must be UTF-8 and not longer than 2^32 - 1 bytes.
 *
 * Threads: any number may use one session at once, until it is closed. When a replaced index cannot be read,
 * a warning goes to standard error and the old index stays in use.
 *
 * Errors: an open or a reply that fails returns a null pointer, and next_steps_last_error() says why. A wrong
 * request does not fail: its reply describes the error.
 */
#ifndef NEXT_STEPS_C_H
#define NEXT_STEPS_C_H

#include <stddef.h> /* NOLINT(modernize-deprecated-headers): this is C */

#ifdef __cplusplus
extern "C" {
#endif

/** What the requests of a client share. */
struct next_steps_session;

/** Opens a session. `options` is a JSON object; a member with "?" may be absent or null:
 *    {"index"?: string, "catalogue"?: string, "serves"?: ["symbol:detail", ...]}
 *  "index" names the file of an index, for misses. It is read now, and again by the first miss after the file
 *  was replaced. "catalogue" names a file with the server's own catalogue, "serves" lists the tools and
 *  actions that the server has. */
struct next_steps_session* next_steps_open(const char* options, size_t size);

/** Closes a session that no thread uses. Does nothing for a null pointer. */
void next_steps_close(struct next_steps_session* session);

/** Returns the reply to a request, and its size in `reply_size`, which may be null and is not set if the call
 *  fails. A null byte follows the reply. Takes time linear in the size of the request, except for a miss. */
char* next_steps_reply(struct next_steps_session* session, const char* request, size_t size,
                       size_t* reply_size);

/** Frees a reply. Does nothing for a null pointer. */
void next_steps_free(char* reply);

/** The reason of the last error on this thread, in UTF-8: "options:1:2: \"indx\" is no member of the
 * options". Valid until the thread's next error or its end. Empty before the first one. */
const char* next_steps_last_error(void); /* NOLINT(modernize-redundant-void-arg) */

/** The version of the library: "1.0.0". */
const char* next_steps_version(void); /* NOLINT(modernize-redundant-void-arg) */

#ifdef __cplusplus
}
#endif

#endif
