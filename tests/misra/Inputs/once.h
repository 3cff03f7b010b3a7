#pragma once
extern int once;
