// sdslist_table.cpp - SLIST: the sorted table, sorting and searching.
// Rule:    while table_valid is set the table holds exactly the list's nodes in comparison order;
//          it is built when somebody first asks, so that runs of appends cost no sorting.
#include <algorithm>
#include <cstring>
#include "CONTAINERS/mzone.h"
#include "CONTAINERS/sdslist.h"
#include "DIAG/user_msg_api.h"

static void die_without_cmp(char const *where)
{
  USER_MSG::die(where, "Use set_cmp_func to specify compare function");
}

int SLIST::ptr_cmp(void const *a, void const *b)
{
  uintptr_t left = uintptr_t(a), right = uintptr_t(b);
  return left < right ? -1 : left > right;
}

void SLIST::clear_sorted_table()
{
  is_sorted = false;
  table_valid = false;
}

void SLIST::set_node_modified()
{
  clear_sorted_table();
}

// The old table stays behind in the zone.
void SLIST::grow_sorted_table(int32_t entries)
{
  if (table_capacity >= entries) return;
  int32_t capacity = table_capacity == 0 ? entries : entries + entries / 4;
  NODE **table = static_cast<NODE **>(mzone()->alloc_array(size_t(capacity), sizeof(NODE *)));
  if (sorted_table) memcpy(table, sorted_table, size_t(table_capacity) * sizeof(NODE *));
  sorted_table = table;
  table_capacity = capacity;
}

void SLIST::build_sorted_table()
{
  if (count == 0 || table_valid) return;
  grow_sorted_table(int32_t(count));
  uint32_t index = 0;
  for (NODE *node = head; node; node = node->next) {
    node->index = index;
    sorted_table[index++] = node;
  }
  qsort(sorted_table, count);
  table_valid = true;
}

//---------------------------------------------------------------------- sorting

// Equal items keep their list order.
int SLIST::stable_itemcmp(NODE const *a, NODE const *b) const
{
  if (!cmp) die_without_cmp("SLIST::stable_itemcmp");
  int order = cmp ? cmp(a->data, b->data) : 0;
  if (order != 0) return order;
  return a->index < b->index ? -1 : a->index > b->index;
}

// Quicksort.  The pivot is compared where it stands, so its place is followed when it is swapped.
// The bounds of both runs are for comparison functions that contradict themselves.
void SLIST::qsort(NODE **table, uint32_t entries)
{
  if (!table) return;
  while (entries > 1) {
    uint32_t i = 0, j = entries - 1, pivot = entries / 2;
    while (i <= j) {
      while (i < entries - 1 && stable_itemcmp(table[i], table[pivot]) < 0)
        i++;
      while (j > 0 && stable_itemcmp(table[j], table[pivot]) > 0)
        j--;
      if (i > j) break;
      if (i < j) {
        std::swap(table[i], table[j]);
        pivot = pivot == i ? j : pivot == j ? i : pivot;
      }
      i++;
      if (j == 0) break;
      j--;
    }
    // The smaller part by recursion, the larger by the loop: the depth stays logarithmic.
    uint32_t low = std::min(j + 1, entries), high = i < entries ? entries - i : 0;
    if (low < high) {
      qsort(table, low);
      table += i;
      entries = high;
    } else {
      qsort(table + i, high);
      entries = low;
    }
  }
}

void SLIST::relink_in_table_order()
{
  NODE *last = nullptr;
  for (uint32_t i = 0; i < count; i++) {
    NODE *node = sorted_table[i];
    node->prev = last;
    (last ? last->next : head) = node;
    last = node;
  }
  last->next = nullptr;
  tail = last;
}

void SLIST::sort(bool force)
{
  if (force) is_sorted = false;
  if (is_sorted || count == 0) return;
  build_sorted_table();
  relink_in_table_order();
  is_sorted = true;
}

void SLIST::uniq()
{
  if (!cmp) return;
  build_sorted_table();
  if (count < 2) return;
  uint32_t old_count = count;
  for (uint32_t i = 0; i + 1 < old_count; i++) {
    if (cmp(sorted_table[i]->data, sorted_table[i + 1]->data) != 0) continue;
    unlink_node(sorted_table[i]);
    count--;
  }
  if (count != old_count) clear_sorted_table();
}

//---------------------------------------------------------------------- searching

int SLIST::find_index(void const *key, uint32_t *index, sds_cmp_func compare)
{
  *index = count;
  if (count == 0) return 0;
  if (!compare) {
    die_without_cmp("SLIST::find_index");
    return 0;
  }
  build_sorted_table();
  uint32_t low = 0, high = count; // the place is in [low, high]
  while (low < high) {
    uint32_t middle = low + (high - 1 - low) / 2;
    int order = compare(key, sorted_table[middle]->data);
    if (order == 0) {
      *index = middle;
      return 1;
    }
    if (order > 0) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  *index = low;
  return 0;
}

SLIST::NODE *SLIST::find(void const *key)
{
  uint32_t index;
  return find_index(key, &index, search_func()) ? sorted_table[index] : nullptr;
}

SLIST::NODE *SLIST::find_first(void const *key)
{
  NODE *node = find(key);
  sds_cmp_func compare = search_func();
  while (node && node->prev && compare(key, node->prev->data) == 0)
    node = node->prev;
  return node;
}

SLIST::NODE *SLIST::find_next(NODE *node)
{
  if (!cmp) {
    die_without_cmp("SLIST::find_next");
    return nullptr;
  }
  if (!node) return nullptr;
  NODE *later = node->next;
  while (later && cmp(node->data, later->data) != 0)
    later = later->next;
  return later;
}

SLIST::NODE *SLIST::find_insert_succ(void const *key)
{
  uint32_t index;
  find_index(key, &index, cmp);
  return index < count ? sorted_table[index] : nullptr;
}

SLIST::NODE *SLIST::find_insert_pred(void const *key)
{
  uint32_t index;
  if (find_index(key, &index, cmp)) return sorted_table[index];
  return index > 0 && table_valid ? sorted_table[index - 1] : nullptr;
}

//---------------------------------------------------------------------- with the table kept

// The order among equal items isn't kept: the new one goes ahead of the one that is found.
uint32_t SLIST::insert_sorted(void *data)
{
  NODE *node = alloc_node(data);
  sort(false);
  uint32_t index;
  find_index(data, &index, cmp);
  grow_sorted_table(int32_t(count) + 1);
  NODE *before = nullptr;
  if (index != count) {
    before = sorted_table[index];
    memmove(sorted_table + index + 1, sorted_table + index, (count - index) * sizeof(NODE *));
  }
  link_node(node, before);
  count++;
  adjust_mempoolsz();
  sorted_table[index] = node;
  return index;
}

void SLIST::erase(void *data)
{
  if (!table_valid) {
    NODE *node = head;
    while (node && node->data != data)
      node = node->next;
    if (node) erase(node);
    return;
  }
  uint32_t index;
  if (!find_index(data, &index, cmp) || !sorted_table[index]->data) return;
  NODE *node = sorted_table[index];
  memmove(sorted_table + index, sorted_table + index + 1, (count - 1 - index) * sizeof(NODE *));
  erase_node(node);
}
