// sdslist.h - SLIST: a doubly linked list with a sorted table, built when it is first searched.
#pragma once
#include <cstdint>
#include <cstdio>

class MZONE;

// Compares two items: negative, 0 or positive.
using sds_cmp_func = int (*)(void const *, void const *);

// Items are `void *` and stay the caller's.  The links give the list order; the sorted table, in
// the order of the comparison function, gives binary search.  Equal items stand in the table in
// their list order.
class SLIST {
public:
  struct NODE {
    void    *data;
    NODE    *next;
    NODE    *prev;
    SLIST   *list;   // null while the node is in no list
    uint32_t index;  // place in the list when the sorted table was built

    SLIST *mylist() const { return list; }
  };

  NODE        *head;
  NODE        *tail;
  NODE       **sorted_table;    // in the zone
  MZONE       *zone;            // of the sorted table; nodes aren't in it
  sds_cmp_func cmp;
  sds_cmp_func find_cmp;        // for searches, when it differs
  uint32_t     count;
  int32_t      table_capacity;
  bool         is_sorted;       // the links are in comparison order
  bool         table_valid;     // sorted_table matches the list
  bool         owns_zone;

  inline static NODE    *free_node_list = nullptr;  // of all lists, linked through next
  inline static uint32_t node_total     = 0;        // nodes ever allocated

  // A null zone: the list makes its own when it needs one.
  explicit SLIST(MZONE *table_zone = nullptr);
  SLIST(SLIST const &) = delete;
  SLIST &operator=(SLIST const &) = delete;

  virtual ~SLIST();
  virtual void set_cmp_func(sds_cmp_func function);
  // Becomes the comparison function too if there is none.
  virtual void set_find_cmp_func(sds_cmp_func function);
  // Takes another zone, which stays the caller's; the list becomes empty.
  virtual void set_mzone(MZONE *table_zone);
  virtual bool is_cmp_func(sds_cmp_func function) const;
  // Put the items of *other, which stays as it is, ahead of the first or behind the last.
  virtual void premerge(SLIST const *other);
  virtual void merge(SLIST const *other);
  virtual NODE *prepend(void *data);
  virtual NODE *append(void *data);
  // Ahead of next, or at the end for null.
  virtual NODE *insert(void *data, NODE *next);
  // Sorts the list if need be and inserts at the item's place, which is returned.
  virtual uint32_t insert_sorted(void *data);
  // Puts the node ahead of `before`, or at the end for null; nothing if one is of another list.
  virtual void move_node(NODE *node, NODE *before);
  virtual void swap_nodes(NODE *a, NODE *b);
  // The removed item, null if the list is empty.
  virtual void *remove_first();
  virtual void *remove_last();
  // Brings the links into comparison order; force: even if they are known to be.
  virtual void sort(bool force = false);
  virtual void clear();
  // Removes the item equal to data; without a valid table the one that is this very pointer.
  virtual void erase(void *data);
  virtual void erase(NODE *node);
  // Remove the null items; of equal items all but the last.
  virtual void purge();
  virtual void uniq();
  // Becomes a copy of *other with its comparison functions.
  virtual void copy(SLIST const *other);
  // To be called after a change inside of an item.
  virtual void set_node_modified();

  // The layer below: links and count are the caller's to keep.
  virtual void link_node(NODE *node, NODE *before);
  virtual void unlink_node(NODE *node);
  virtual void erase_node(NODE *node);
  virtual void build_sorted_table();
  virtual void clear_sorted_table();
  virtual void grow_sorted_table(int32_t entries);
  virtual void qsort(NODE **table, uint32_t entries);
  virtual int stable_itemcmp(NODE const *a, NODE const *b) const;
  // 1 and the table index of an item equal to key, or 0 and the index where it would stand.
  virtual int find_index(void const *key, uint32_t *index, sds_cmp_func compare);
  virtual void adjust_mempoolsz();
  virtual NODE *alloc_node(void *data);

  // Walking; null at the end.
  virtual NODE *begin() const;
  virtual NODE *end() const;  // the last node
  virtual NODE *next(NODE const *node) const;
  virtual NODE *prev(NODE const *node) const;
  virtual uint32_t size() const;
  virtual bool is_empty() const;

  // Searches; null if there is none.  Without a comparison function they are a fault of the tool.
  virtual NODE *find_first(void const *key);  // of equal neighbours; wants sorted links
  virtual NODE *find_next(NODE *node);        // the first later node with an equal item
  virtual NODE *find_insert_succ(void const *key);
  virtual NODE *find_insert_pred(void const *key);
  virtual NODE *find(void const *key);
  virtual MZONE *mzone();
  virtual void dump(FILE *file);

  NODE *add(void *data) { return append(data); }
  // Orders two pointers as addresses: -1, 0 or 1.
  static int ptr_cmp(void const *a, void const *b);

private:
  static void release_node(NODE *node);
  void *remove_node(NODE *node);
  void relink_in_table_order();
  sds_cmp_func search_func() const { return find_cmp ? find_cmp : cmp; }
};
