// token_cache_private.h - what the files of the token cache share among themselves.
#pragma once
#include "lex/token_cache.h"

// Puts a token (with its constant copy and pragmas) back on the free lists.
void free_cached_token(a_cached_token *token);
// Puts the cache's tokens in front of those to deliver; the cache becomes empty.
void deliver_first(a_token_cache *cache);
// If a rescan replays the cache, which is going away, the rescan takes over the tokens: true.
bool hand_cache_to_rescan(a_token_cache *cache);
void append_to_cache(a_token_cache *cache, a_cached_token *token);

void token_cache_build_one_time_init();
