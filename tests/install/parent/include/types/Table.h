#pragma once

#define OWN_TABLE
