// sdshash.h - SHASH: a chained hash table whose buckets are sorted lists.
#pragma once
#include "CONTAINERS/sdslist.h"

// The bucket, from 0 to buckets - 1, of the key that stands at `key_ref`.
using sds_hash_func = unsigned long (*)(void const *key_ref, int buckets);

// Keys are all pointers or all scalars, as the first add says, and may occur more than once.  The
// table keeps the pointer, not what it points to.  Hash functions get the address of the key;
// comparison functions get two items.
class SHASH {
public:
  using NODE = SLIST::NODE;

  union KEY {
    void const   *pointer;
    unsigned long scalar;
  };
  // An entry, which is the data of a node.
  struct ITEM {
    KEY  *key_ref;  // &key
    void *value;    // on the free chain the next free item
    KEY   key;
  };
  enum { no_key_yet, pointer_keys, scalar_keys };

  SLIST        *buckets;       // in the zone, behind a word with their number
  sds_cmp_func  cmp;
  sds_hash_func hash;
  int           count;         // entries
  int           bucket_count;
  MZONE        *zone;
  bool          owns_zone;
  int           key_mode;      // no_key_yet, pointer_keys or scalar_keys
  ITEM         *free_items;
  uint32_t      item_total;    // items taken from the zone

  // With a zone of its own, or in a zone that stays the caller's and must live longer.
  SHASH(sds_hash_func hash_function, sds_cmp_func cmp_function, int number_of_buckets);
  SHASH(MZONE *table_zone, sds_hash_func hash_function, sds_cmp_func cmp_function,
        int number_of_buckets);
  SHASH(SHASH const &) = delete;
  SHASH &operator=(SHASH const &) = delete;

  virtual ~SHASH();
  virtual void set_cmp_func(sds_cmp_func function);
  virtual void set_hash_func(sds_hash_func function);
  virtual void add(void const *key, void *value);
  virtual void add(unsigned long key, void *value);
  // Replaces the value of the entry.
  virtual void update(NODE *node, void *value);
  // Removes all entries.  The kind of the keys stays.
  virtual void clear();
  // Removes an entry with this key, if there is one; the entry of a node.
  virtual void erase(void const *key);
  virtual void erase(unsigned long key);
  virtual void erase(NODE *node);
  virtual ITEM *alloc_list_item();
  virtual void recover_list_items();

  // Walking, bucket by bucket and sorted in each; null at the end.
  virtual NODE *begin() const;
  virtual NODE *end() const;  // the last node
  virtual NODE *next(NODE const *node) const;
  virtual NODE *prev(NODE const *node) const;

  // An entry with this key, the first of them, the next with the same key; null if there is none.
  virtual NODE *find(void const *key);
  virtual NODE *find(unsigned long key);
  virtual NODE *find_first(void const *key);
  virtual NODE *find_first(unsigned long key);
  virtual NODE *find_next(NODE *node);
  virtual int size() const;
  virtual MZONE *mzone() const;
  virtual void dump(FILE *file);

  // Keys that are `char const *`: a null one is below any other.
  static unsigned long str_hash(void const *key_ref, int buckets);
  static int str_cmp(void const *a, void const *b);
  // Pointers as keys; UINT32_cmp compares them too.
  static unsigned long ptr_hash(void const *key_ref, int buckets);
  // Scalar keys.
  static unsigned long UINT32_hash(void const *key_ref, int buckets);
  static int UINT32_cmp(void const *a, void const *b);

private:
  void init_shash(MZONE *table_zone, sds_hash_func hash_function, sds_cmp_func cmp_function,
                  int number_of_buckets);
  void build_buckets();
  void destroy_buckets();
  bool keys_differ(int mode, char const *where, char const *text) const;
  SLIST &bucket_of(ITEM const &item) const;
  void add_entry(KEY key, int mode, void *value);
  void erase_entry(KEY key);
  NODE *find_entry(KEY key, bool first);
  NODE *first_in(int bucket) const;
  NODE *last_below(int bucket) const;
};
