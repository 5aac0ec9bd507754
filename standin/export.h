// Marks what hvstandin.dll offers to the module, the desk and the worker.
#pragma once

#ifdef HALVORAN_STANDIN_BUILD
#define HALVORAN_STANDIN_API __declspec(dllexport)
#else
#define HALVORAN_STANDIN_API __declspec(dllimport)
#endif
