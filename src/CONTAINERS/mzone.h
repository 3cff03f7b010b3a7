// mzone.h - zones: memory that is handed out piece by piece and given back at once.
#pragma once
#include <cstddef>
#include <cstdint>

// An object that a zone owns: MZONE::own hands it over, and the zone deletes it.
class MZONE_OBJECT {
public:
  virtual ~MZONE_OBJECT() = default;
};

class MZONE {
public:
  struct POOL {
    char    *base;
    uint32_t size;
    POOL    *next;
  };
  struct OBJECT_NODE {
    OBJECT_NODE  *next;
    OBJECT_NODE  *prev;
    MZONE_OBJECT *object;
  };

  uint32_t    min_alloc;  // the smallest pool, in bytes
  uint32_t    avail;      // bytes left in the newest pool
  POOL       *pool;       // newest first
  uint32_t    cur_size;   // bytes asked for since the last reset
  uint32_t    max_size;   // the highest that cur_size has been
  uint32_t    zid;
  char const *file;       // where the zone was created; not owned
  int         line;
  OBJECT_NODE objects;    // sentinel of the ring of owned objects, oldest first

  inline static uint32_t next_id     = 0;
  inline static uint32_t cur_alloced = 0;  // bytes that all zones have from the system
  inline static uint32_t max_alloced = 0;  // the highest that cur_alloced has been

  // No pool is taken before the first alloc.
  MZONE(unsigned size, char const *file, int line);
  MZONE(MZONE const &) = delete;
  MZONE &operator=(MZONE const &) = delete;
  ~MZONE();

  // Zero-filled memory, aligned to 8, until the next reset; without memory the process ends.
  void *alloc(unsigned size);
  // The same for count pieces of size bytes each.
  void *alloc_array(size_t count, size_t size);
  // Takes everything back: deletes the owned objects and keeps, zeroed, the newest pool.
  void reset();
  void set_min_alloc(unsigned size);
  unsigned id() const;
  // The zone, allocated by new, deletes the object, allocated by new, at its next reset or its end.
  void own(MZONE_OBJECT *object);
  // Enters the zone in zonelist until its end; false if the list is full.
  bool enlist();
  // Writes the figures to standard output, with pools each pool too; nothing for an unused zone.
  void dump(bool pools);

private:
  void new_pool(unsigned size);
  void free_pools_behind(POOL **link);
  void delete_objects();
  void dump_pools() const;
};

// Zones for the reports: szones, named by their index, are a tool's to write; zonelist is written
// by MZONE::enlist.
enum { SZONES_MAX = 20, ZONELIST_MAX = 256 };
extern MZONE *szones[SZONES_MAX];
extern MZONE *zonelist[ZONELIST_MAX];
extern int    zl_avail;  // zones in zonelist

// Dump the szones that are set; the zonelist; the totals and the zonelist without pools.
void zdump_zones_id(bool pools);
void zdump_zones(bool pools);
void zreport();

// Heap memory without a zone; without memory the process ends.  The caller frees both with free.
void *ralloc(int size);             // zero filled
void *rrealloc(void *p, int size);  // p resized; ralloc for a null p
