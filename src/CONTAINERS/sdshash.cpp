// sdshash.cpp - SHASH: the hash table.
// Rule:    buckets and items live in the zone, nodes on the chain that all lists share; a bucket's
//          list is sorted by construction, as entries come by insert_sorted alone.
#include "CONTAINERS/sdshash.h"
#include <algorithm>
#include <cstring>
#include <new>
#include "CONTAINERS/mzone.h"
#include "DIAG/user_msg_api.h"

SHASH::SHASH(sds_hash_func hash_function, sds_cmp_func cmp_function, int number_of_buckets)
{
  init_shash(nullptr, hash_function, cmp_function, number_of_buckets);
}

SHASH::SHASH(MZONE *table_zone, sds_hash_func hash_function, sds_cmp_func cmp_function,
             int number_of_buckets)
{
  init_shash(table_zone, hash_function, cmp_function, number_of_buckets);
}

void SHASH::init_shash(MZONE *table_zone, sds_hash_func hash_function, sds_cmp_func cmp_function,
                       int number_of_buckets)
{
  count = 0;
  bucket_count = std::max(number_of_buckets, 1);
  zone = table_zone;
  owns_zone = !table_zone;
  key_mode = no_key_yet;
  free_items = nullptr;
  item_total = 0;
  if (owns_zone) zone = new MZONE(1024, "sdshash", 94);
  build_buckets();
  SHASH::set_hash_func(hash_function);
  SHASH::set_cmp_func(cmp_function);
}

// The number of buckets stands in a word ahead of the first.
void SHASH::build_buckets()
{
  static_assert(alignof(SLIST) <= sizeof(size_t), "the word ahead keeps the buckets aligned");
  size_t room = sizeof(size_t) + size_t(bucket_count) * sizeof(SLIST);
  char *block = static_cast<char *>(zone->alloc_array(room, 1));
  size_t number = size_t(bucket_count);
  memcpy(block, &number, sizeof number);
  buckets = reinterpret_cast<SLIST *>(block + sizeof(size_t));
  for (int i = 0; i < bucket_count; i++) {
    new (&buckets[i]) SLIST(nullptr);
    buckets[i].set_mzone(zone);
  }
}

void SHASH::destroy_buckets()
{
  for (int i = 0; i < bucket_count; i++)
    buckets[i].~SLIST();
}

SHASH::~SHASH()
{
  destroy_buckets();
  if (owns_zone) delete zone;
}

void SHASH::set_cmp_func(sds_cmp_func function)
{
  cmp = function;
  for (int i = 0; i < bucket_count; i++)
    buckets[i].set_cmp_func(function);
}

void SHASH::set_hash_func(sds_hash_func function)
{
  hash = function;
}

//---------------------------------------------------------------------- items

SHASH::ITEM *SHASH::alloc_list_item()
{
  if (!free_items) {
    uint32_t number = std::max(32u, item_total / 2);
    ITEM *block = static_cast<ITEM *>(zone->alloc_array(number, sizeof(ITEM)));
    for (uint32_t i = 0; i + 1 < number; i++)
      block[i].value = &block[i + 1];
    free_items = block;
    item_total += number;
  }
  ITEM *item = free_items;
  free_items = static_cast<ITEM *>(item->value);
  item->value = nullptr;
  return item;
}

void SHASH::recover_list_items()
{
  for (int i = 0; i < bucket_count; i++) {
    while (ITEM *item = static_cast<ITEM *>(buckets[i].remove_first())) {
      *item = {nullptr, free_items, {nullptr}};
      free_items = item;
    }
  }
}

void SHASH::clear()
{
  count = 0;
  if (!owns_zone) {
    recover_list_items();
    return;
  }
  destroy_buckets();
  zone->reset();
  free_items = nullptr;
  item_total = 0;
  build_buckets();
  SHASH::set_cmp_func(cmp);
}

//---------------------------------------------------------------------- keys

// Reports a key of the other kind than the table's; `where` is the operation.
bool SHASH::keys_differ(int mode, char const *where, char const *text) const
{
  if (key_mode == no_key_yet || key_mode == mode) return false;
  USER_MSG::die(where, "%s", text);
  return true;
}

SLIST &SHASH::bucket_of(ITEM const &item) const
{
  return buckets[hash(item.key_ref, bucket_count)];
}

void SHASH::add_entry(KEY key, int mode, void *value)
{
  key_mode = mode;
  ITEM *item = alloc_list_item();
  *item = {&item->key, value, key};
  bucket_of(*item).insert_sorted(item);
  count++;
}

void SHASH::add(void const *key, void *value)
{
  if (keys_differ(pointer_keys, "SHASH::add (pointer)", "cannot mix hash key types")) return;
  add_entry({.pointer = key}, pointer_keys, value);
}

void SHASH::add(unsigned long key, void *value)
{
  if (keys_differ(scalar_keys, "SHASH::add (scalar)", "cannot mix hash key types")) return;
  add_entry({.scalar = key}, scalar_keys, value);
}

void SHASH::update(NODE *node, void *value)
{
  if (node && node->data) static_cast<ITEM *>(node->data)->value = value;
}

// With no key yet the functions may be of either kind, so they aren't asked.
void SHASH::erase_entry(KEY key)
{
  if (key_mode == no_key_yet) return;
  ITEM item;
  item = {&item.key, nullptr, key};
  SLIST &bucket = bucket_of(item);
  if (!bucket.find(&item)) return;
  bucket.erase(static_cast<void *>(&item));
  count--;
}

void SHASH::erase(void const *key)
{
  if (keys_differ(pointer_keys, "SHASH::erase (pointer)", "cannot mix key types")) return;
  erase_entry({.pointer = key});
}

void SHASH::erase(unsigned long key)
{
  if (keys_differ(scalar_keys, "SHASH::erase (scalar)", "cannot mix key types")) return;
  erase_entry({.scalar = key});
}

// A node that was erased before belongs to no list.
void SHASH::erase(NODE *node)
{
  if (!node || !node->list) return;
  SLIST *bucket = node->mylist();
  uint32_t old_count = bucket->size();
  bucket->erase(node);
  count -= int(old_count - bucket->size());
}

//---------------------------------------------------------------------- searching

SHASH::NODE *SHASH::find_entry(KEY key, bool first)
{
  if (key_mode == no_key_yet) return nullptr;
  ITEM item;
  item = {&item.key, nullptr, key};
  SLIST &bucket = bucket_of(item);
  if (!first) return bucket.find(&item);
  bucket.sort(false);
  return bucket.find_first(&item);
}

SHASH::NODE *SHASH::find(void const *key)
{
  if (keys_differ(pointer_keys, "SHASH::find (pointer)", "cannot mix key types")) return nullptr;
  return find_entry({.pointer = key}, false);
}

SHASH::NODE *SHASH::find(unsigned long key)
{
  if (keys_differ(scalar_keys, "SHASH::find (scalar)", "cannot mix key types")) return nullptr;
  return find_entry({.scalar = key}, false);
}

SHASH::NODE *SHASH::find_first(void const *key)
{
  if (keys_differ(pointer_keys, "SHASH::find (pointer)", "cannot mix key types")) return nullptr;
  return find_entry({.pointer = key}, true);
}

SHASH::NODE *SHASH::find_first(unsigned long key)
{
  if (keys_differ(scalar_keys, "SHASH::find (scalar)", "cannot mix key types")) return nullptr;
  return find_entry({.scalar = key}, true);
}

SHASH::NODE *SHASH::find_next(NODE *node)
{
  return node && node->list ? node->mylist()->find_next(node) : nullptr;
}

//---------------------------------------------------------------------- walking

SHASH::NODE *SHASH::begin() const
{
  return first_in(0);
}

// The first entry of the buckets from number i on.
SHASH::NODE *SHASH::first_in(int i) const
{
  while (i < bucket_count && buckets[i].is_empty())
    i++;
  return i < bucket_count ? buckets[i].begin() : nullptr;
}

// The last entry of the buckets below number i.
SHASH::NODE *SHASH::last_below(int i) const
{
  while (i > 0 && buckets[i - 1].is_empty())
    i--;
  return i > 0 ? buckets[i - 1].end() : nullptr;
}

SHASH::NODE *SHASH::end() const
{
  return last_below(bucket_count);
}

SHASH::NODE *SHASH::next(NODE const *node) const
{
  if (!node || !node->list) return nullptr;
  if (NODE *following = node->mylist()->next(node)) return following;
  return first_in(int(&bucket_of(*static_cast<ITEM const *>(node->data)) - buckets) + 1);
}

SHASH::NODE *SHASH::prev(NODE const *node) const
{
  if (!node || !node->list) return nullptr;
  if (NODE *preceding = node->mylist()->prev(node)) return preceding;
  int i = bucket_count - 1;
  while (i >= 0 && &buckets[i] != node->mylist())
    i--;
  return last_below(i);
}

int SHASH::size() const
{
  return count;
}

MZONE *SHASH::mzone() const
{
  return zone;
}

void SHASH::dump(FILE *file)
{
  int empty = int(std::count_if(buckets, buckets + bucket_count,
                                [](SLIST const &bucket) { return bucket.is_empty(); }));
  fprintf(file, "SHASH:  0x%08lx\n", (unsigned long)this);
  fprintf(file, "SIZE:     %08d\n", count);
  fprintf(file, "ROWS:     %08d\n", bucket_count);
  fprintf(file, "  - %d/%d Rows are empty\n", empty, bucket_count);
  for (int i = 0; i < bucket_count; i++) {
    if (buckets[i].is_empty()) continue;
    fprintf(file, "  - Row %d has %d entries\n", i, int(buckets[i].size()));
  }
  fprintf(file, "\n");
}

//---------------------------------------------------------------------- ready-made functions

// An item's first word leads to its key.
static SHASH::KEY const &key_of(void const *item)
{
  return **static_cast<SHASH::KEY const *const *>(item);
}

unsigned long SHASH::str_hash(void const *key_ref, int buckets)
{
  char const *text = *static_cast<char const *const *>(key_ref);
  if (!text || !*text) return 0;
  uint32_t h = 0;
  for (; *text; text++) {
    h = h * 16 + uint32_t(int32_t((signed char)*text));
    uint32_t top = h & 0xF0000000u;
    if (top != 0) h ^= top >> 24;
    h &= ~top;
  }
  return h % (unsigned long)buckets;
}

int SHASH::str_cmp(void const *a, void const *b)
{
  char const *left = static_cast<char const *>(key_of(a).pointer);
  char const *right = static_cast<char const *>(key_of(b).pointer);
  if (!left || !right) return right ? -1 : left != nullptr;
  return strcmp(left, right);
}

unsigned long SHASH::ptr_hash(void const *key_ref, int buckets)
{
  return (*static_cast<unsigned long const *>(key_ref) >> 2) % (unsigned long)buckets;
}

unsigned long SHASH::UINT32_hash(void const *key_ref, int buckets)
{
  return *static_cast<unsigned long const *>(key_ref) % (unsigned long)buckets;
}

int SHASH::UINT32_cmp(void const *a, void const *b)
{
  unsigned long left = key_of(a).scalar, right = key_of(b).scalar;
  return left < right ? -1 : left > right;
}
