#pragma once
once