// mzone.cpp - zones.
// Owns:    the totals of all zones, the lists of zones for the reports.
// Rule:    all memory of a pool behind what was handed out is zero; reset keeps it so.
#include "CONTAINERS/mzone.h"
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include "DIAG/out_of_memory.h"

MZONE *szones[SZONES_MAX];
MZONE *zonelist[ZONELIST_MAX];
int zl_avail;

void *ralloc(int size)
{
  void *block = calloc(1, size == 0 ? 1 : size_t(size)); // a negative size is more than there is
  if (!block) tool_out_of_memory();
  return block;
}

void *rrealloc(void *p, int size)
{
  if (!p) return ralloc(size);
  void *block = realloc(p, size == 0 ? 1 : size_t(size));
  if (!block) tool_out_of_memory();
  return block;
}

//---------------------------------------------------------------------- life of a zone

MZONE::MZONE(unsigned size, char const *creator, int creator_line)
    : min_alloc(size), avail(0), pool(nullptr), cur_size(0), max_size(0), zid(next_id++),
      file(creator), line(creator_line), objects{&objects, &objects, nullptr}
{
}

MZONE::~MZONE()
{
  delete_objects();
  free_pools_behind(&pool);
  std::replace(szones, szones + SZONES_MAX, this, static_cast<MZONE *>(nullptr));
  zl_avail = int(std::remove(zonelist, zonelist + zl_avail, this) - zonelist);
}

void MZONE::set_min_alloc(unsigned size)
{
  min_alloc = size;
}

unsigned MZONE::id() const
{
  return zid;
}

bool MZONE::enlist()
{
  if (std::find(zonelist, zonelist + zl_avail, this) != zonelist + zl_avail) return true;
  if (zl_avail == ZONELIST_MAX) return false;
  zonelist[zl_avail++] = this;
  return true;
}

//---------------------------------------------------------------------- memory

// The rest of the old pool is given up.
void MZONE::new_pool(unsigned size)
{
  POOL *record = static_cast<POOL *>(calloc(1, sizeof(POOL)));
  char *base = static_cast<char *>(calloc(1, std::max(size, 1u)));
  if (!record || !base) tool_out_of_memory();
  *record = {base, size, pool};
  pool = record;
  avail = size;
  cur_alloced += size;
  max_alloced = std::max(max_alloced, cur_alloced);
}

void *MZONE::alloc(unsigned size)
{
  if (avail < size || !pool) new_pool(std::max(min_alloc, size));
  void *result = pool->base + (pool->size - avail);
  avail = avail - size > 7 ? avail - ((size & ~7u) + 8) : 0;
  cur_size += size;
  max_size = std::max(max_size, cur_size);
  return result;
}

void *MZONE::alloc_array(size_t count, size_t size)
{
  if (size != 0 && count > UINT32_MAX / size) tool_out_of_memory();
  return alloc(unsigned(count * size));
}

void MZONE::free_pools_behind(POOL **link)
{
  while (POOL *old = *link) {
    *link = old->next;
    cur_alloced -= old->size;
    free(old->base);
    free(old);
  }
}

void MZONE::reset()
{
  delete_objects();
  if (!pool) return;
  free_pools_behind(&pool->next);
  memset(pool->base, 0, pool->size - avail);
  avail = pool->size;
  cur_size = 0;
}

//---------------------------------------------------------------------- owned objects

void MZONE::own(MZONE_OBJECT *object)
{
  OBJECT_NODE *node = new OBJECT_NODE{&objects, objects.prev, object};
  objects.prev->next = node;
  objects.prev = node;
}

// The node goes first, so that an object's destructor may hand over another object.
void MZONE::delete_objects()
{
  while (objects.next != &objects) {
    OBJECT_NODE *node = objects.next;
    objects.next = node->next;
    node->next->prev = &objects;
    MZONE_OBJECT *object = node->object;
    delete node;
    delete object;
  }
}

//---------------------------------------------------------------------- reports

static std::string size_text(uint32_t bytes)
{
  if (bytes > 999999) return std::to_string(bytes / 1000000) + "M";
  if (bytes > 999) return std::to_string(bytes / 1000) + "K";
  return std::to_string(bytes);
}

void MZONE::dump(bool pools)
{
  if (max_size == 0) return;
  printf("--> Zone %p", static_cast<void *>(this));
  MZONE **named = std::find(szones, szones + SZONES_MAX, this);
  if (named != szones + SZONES_MAX) {
    printf(" (zid: %d)\n", int(named - szones));
  } else {
    printf("\n");
  }
  int pool_count = 0;
  for (POOL *p = pool; p; p = p->next)
    pool_count++;
  printf("size   :  %s bytes\n", size_text(cur_size).c_str());
  printf("# pools:  %d\n", pool_count);
  if (line != 0) printf("created:  %s : %d\n", file ? file : "", line);
  if (pools) dump_pools();
}

void MZONE::dump_pools() const
{
  printf("       size:      %d\n", int(min_alloc));
  printf("       avail:     %d\n", int(avail));
  printf("       pool:      %p\n", static_cast<void *>(pool));
  printf("       cur_size:  %d\n", int(cur_size));
  printf("       max_size:  %d\n", int(max_size));
  for (POOL *p = pool; p; p = p->next) {
    printf("...       size:  %d\n", int(p->size));
    printf("          pool:  %p\n", static_cast<void *>(p->base));
    printf("          next:  %p\n", static_cast<void *>(p->next));
  }
}

void zdump_zones_id(bool pools)
{
  for (MZONE *zone : szones) {
    if (zone) zone->dump(pools);
  }
}

void zdump_zones(bool pools)
{
  for (int i = 0; i < zl_avail; i++)
    zonelist[i]->dump(pools);
}

void zreport()
{
  puts("\nMemory zone usage\n-----------------");
  printf("Maximum allocated  :  %s bytes\n", size_text(MZONE::max_alloced).c_str());
  printf("Currently allocated:  %s bytes\n\n", size_text(MZONE::cur_alloced).c_str());
  zdump_zones(false);
}
