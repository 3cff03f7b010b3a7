// sdslist.cpp - SLIST: nodes, links, and the operations that change the list order.
// Owns:    the chain of free nodes of all lists.
// Uses:    sdslist_table.cpp for the sorted table.
// Rule:    every operation here that changes links or count marks the sorted table stale, but for
//          the layer of link_node, unlink_node and erase_node.
#include "CONTAINERS/sdslist.h"
#include <algorithm>
#include <new>
#include "CONTAINERS/mzone.h"
#include "DIAG/out_of_memory.h"

SLIST::SLIST(MZONE *table_zone)
    : head(nullptr), tail(nullptr), sorted_table(nullptr), zone(table_zone), cmp(nullptr),
      find_cmp(nullptr), count(0), table_capacity(0), is_sorted(true), table_valid(false),
      owns_zone(false)
{
}

SLIST::~SLIST()
{
  clear();
  if (owns_zone) delete zone;
}

void SLIST::set_cmp_func(sds_cmp_func function)
{
  if (is_cmp_func(function)) return;
  cmp = function;
  clear_sorted_table();
}

void SLIST::set_find_cmp_func(sds_cmp_func function)
{
  find_cmp = function;
  if (!cmp) cmp = function;
}

bool SLIST::is_cmp_func(sds_cmp_func function) const
{
  return cmp == function;
}

void SLIST::set_mzone(MZONE *table_zone)
{
  if (count != 0) clear();
  if (table_zone == zone) return;
  if (owns_zone) delete zone;
  zone = table_zone;
  owns_zone = false;
  sorted_table = nullptr;
  table_capacity = 0;
  table_valid = false;
}

MZONE *SLIST::mzone()
{
  if (!zone) {
    zone = new MZONE(200, "sdslist", 913);
    owns_zone = true;
  }
  return zone;
}

// A long list takes its next pools in steps of a quarter of its length.
void SLIST::adjust_mempoolsz()
{
  enum { LONG_LIST = 41, NODE_ROOM = 20 };
  if (owns_zone && count >= LONG_LIST) zone->set_min_alloc(count / 4 * NODE_ROOM);
}

//---------------------------------------------------------------------- nodes

// A block of new nodes; all but the first go on the free chain.
static SLIST::NODE *alloc_nodes()
{
  uint32_t number = std::max(32u, SLIST::node_total / 2);
  SLIST::NODE *block = new (std::nothrow) SLIST::NODE[number]();
  if (!block) tool_out_of_memory();
  SLIST::node_total += number;
  for (uint32_t i = 1; i + 1 < number; i++)
    block[i].next = &block[i + 1];
  SLIST::free_node_list = &block[1];
  return block;
}

SLIST::NODE *SLIST::alloc_node(void *data)
{
  NODE *node = free_node_list;
  if (node) {
    free_node_list = node->next;
  } else {
    node = alloc_nodes();
  }
  *node = {data, nullptr, nullptr, this, 0};
  return node;
}

void SLIST::release_node(NODE *node)
{
  *node = {nullptr, free_node_list, nullptr, nullptr, 0};
  free_node_list = node;
}

void SLIST::link_node(NODE *node, NODE *before)
{
  node->list = this;
  node->next = before;
  node->prev = before ? before->prev : tail;
  (node->prev ? node->prev->next : head) = node;
  (before ? before->prev : tail) = node;
}

void SLIST::unlink_node(NODE *node)
{
  if (node->list != this) return;
  (node->prev ? node->prev->next : head) = node->next;
  (node->next ? node->next->prev : tail) = node->prev;
  node->next = node->prev = nullptr;
  node->list = nullptr;
}

void SLIST::erase_node(NODE *node)
{
  if (!node || !node->data || node->list != this) return;
  unlink_node(node);
  release_node(node);
  count--;
}

//---------------------------------------------------------------------- inserting and removing

SLIST::NODE *SLIST::insert(void *data, NODE *next)
{
  NODE *node = alloc_node(data);
  link_node(node, next);
  count++;
  clear_sorted_table();
  return node;
}

SLIST::NODE *SLIST::prepend(void *data)
{
  return insert(data, head);
}

SLIST::NODE *SLIST::append(void *data)
{
  return insert(data, nullptr);
}

// The numbers of items are taken first, so that a list can be merged with itself.
void SLIST::premerge(SLIST const *other)
{
  if (!other) return;
  NODE *node = other->tail;
  for (uint32_t left = other->count; left != 0; left--, node = node->prev)
    prepend(node->data);
}

void SLIST::merge(SLIST const *other)
{
  if (!other) return;
  NODE *node = other->head;
  for (uint32_t left = other->count; left != 0; left--, node = node->next)
    append(node->data);
}

void SLIST::copy(SLIST const *other)
{
  if (!other || other == this) return;
  clear();
  cmp = other->cmp;
  find_cmp = other->find_cmp;
  merge(other);
}

void *SLIST::remove_node(NODE *node)
{
  if (!node) return nullptr;
  void *data = node->data;
  unlink_node(node);
  release_node(node);
  count--;
  clear_sorted_table();
  return data;
}

void *SLIST::remove_first()
{
  return remove_node(head);
}

void *SLIST::remove_last()
{
  return remove_node(tail);
}

void SLIST::erase(NODE *node)
{
  erase_node(node);
  clear_sorted_table();
}

void SLIST::clear()
{
  if (count == 0) return;
  clear_sorted_table();
  tail->next = free_node_list;
  free_node_list = head;
  head = tail = nullptr;
  count = 0;
}

void SLIST::purge()
{
  uint32_t old_count = count;
  for (NODE *node = head; node;) {
    NODE *following = node->next;
    if (!node->data) {
      unlink_node(node);
      count--;
    }
    node = following;
  }
  if (count != old_count) clear_sorted_table();
}

//---------------------------------------------------------------------- moving

void SLIST::move_node(NODE *node, NODE *before)
{
  if (!node || node == before || node->list != this) return;
  if (before && before->list != this) return;
  unlink_node(node);
  link_node(node, before);
  clear_sorted_table();
}

void SLIST::swap_nodes(NODE *a, NODE *b)
{
  if (!a || !b || a == b || a->list != this || b->list != this) return;
  NODE *behind_b = b->next;
  if (behind_b == a) {
    move_node(a, b);
    return;
  }
  move_node(b, a);
  move_node(a, behind_b);
}

//---------------------------------------------------------------------- walking

SLIST::NODE *SLIST::begin() const
{
  return head;
}

SLIST::NODE *SLIST::end() const
{
  return tail;
}

SLIST::NODE *SLIST::next(NODE const *node) const
{
  return node ? node->next : nullptr;
}

SLIST::NODE *SLIST::prev(NODE const *node) const
{
  return node ? node->prev : nullptr;
}

uint32_t SLIST::size() const
{
  return count;
}

bool SLIST::is_empty() const
{
  return count == 0;
}

void SLIST::dump(FILE *file)
{
  fprintf(file, "SLIST:  0x%08lx\n", (unsigned long)this);
  fprintf(file, "SIZE:     %08ld\n", long(count));
  fprintf(file, "ITEMS:\n");
  int number = 0;
  for (NODE *node = head; node; node = node->next) {
    fprintf(file, "%-10d:  0x%08lx  0x%08lx\n", number++, (unsigned long)node,
            (unsigned long)node->data);
  }
}
