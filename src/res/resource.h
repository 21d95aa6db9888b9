// Identifiers of the dialogs, their controls and the strings of TQTStdInfo.rc.
// Ids repeat across dialogs (201 is both a button of the main dialog and the size dialog);
// each use has its own symbol, with the same value.
#pragma once

#ifndef IDC_STATIC
#define IDC_STATIC                      -1
#endif

// Dialogs.
#define IDD_MAIN                        200
#define IDD_SIZE                        201
#define IDD_SETUP                       202
#define IDD_ATTRINF                     1000
#define IDD_COLLECTINF                  2000
#define IDD_FILEOUT                     3000

// Strings.
#define IDS_COMMAND_NAME                100
#define IDS_COMMAND_GROUP               101
#define IDS_APP_DESCRIPTION             102

// Main dialog (200).
#define IDC_SHEET_NAME                  200
#define IDC_SET                         201
#define IDC_INFO_CHECK                  202
#define IDC_TAKEOFF_CHECK               203
#define IDC_RESTORE_COLOURS             388

// Size table settings (202).
#define IDC_CHAR_HEIGHT                 387
#define IDC_CHAR_WIDTH                  388
#define IDC_ROW_SPACING                 389

// Size setting (201): buttons and size headings.
#define IDC_REGISTER_SIZES              322
#define IDC_ADD_ROW                     324
#define IDC_DELETE_ROW                  325
#define IDC_ROW_UP                      392
#define IDC_ROW_DOWN                    393
#define IDC_NOTE_SETTINGS               201
#define IDC_SIZE_HEAD1                  326
#define IDC_SIZE_HEAD2                  327
#define IDC_SIZE_HEAD3                  328
#define IDC_SIZE_HEAD4                  329
#define IDC_SIZE_HEAD5                  378
#define IDC_SIZE_HEAD6                  379
#define IDC_SIZE_HEAD7                  380
#define IDC_SIZE_HEAD8                  381
#define IDC_SIZE_HEAD9                  382
#define IDC_SIZE_HEAD10                 383
#define IDC_SIZE_HEAD11                 384
#define IDC_SIZE_HEAD12                 385

// Size setting (201): the control table, row by row. Row 2 is numbered irregularly.
#define IDC_ROW1_CHECK                  386
#define IDC_ROW1_SYMBOL                 395
#define IDC_ROW1_NUMBER                 396
#define IDC_ROW1_SIZE1                  397
#define IDC_ROW1_SIZE2                  410
#define IDC_ROW1_SIZE3                  411
#define IDC_ROW1_SIZE4                  412
#define IDC_ROW1_SIZE5                  413
#define IDC_ROW1_SIZE6                  414
#define IDC_ROW1_SIZE7                  415
#define IDC_ROW1_SIZE8                  416
#define IDC_ROW1_SIZE9                  417
#define IDC_ROW1_SIZE10                 418
#define IDC_ROW1_SIZE11                 419
#define IDC_ROW1_SIZE12                 420
#define IDC_ROW1_COUNT                  421

#define IDC_ROW2_CHECK                  387
#define IDC_ROW2_SYMBOL                 398
#define IDC_ROW2_NUMBER                 399
#define IDC_ROW2_SIZE1                  400
#define IDC_ROW2_SIZE2                  401
#define IDC_ROW2_SIZE3                  402
#define IDC_ROW2_SIZE4                  403
#define IDC_ROW2_SIZE5                  404
#define IDC_ROW2_SIZE6                  405
#define IDC_ROW2_SIZE7                  406
#define IDC_ROW2_SIZE8                  407
#define IDC_ROW2_SIZE9                  408
#define IDC_ROW2_SIZE10                 409
#define IDC_ROW2_SIZE11                 422
#define IDC_ROW2_SIZE12                 423
#define IDC_ROW2_COUNT                  424

#define IDC_ROW3_CHECK                  388
#define IDC_ROW3_SYMBOL                 425
#define IDC_ROW3_NUMBER                 426
#define IDC_ROW3_SIZE1                  427
#define IDC_ROW3_SIZE2                  428
#define IDC_ROW3_SIZE3                  429
#define IDC_ROW3_SIZE4                  430
#define IDC_ROW3_SIZE5                  431
#define IDC_ROW3_SIZE6                  432
#define IDC_ROW3_SIZE7                  433
#define IDC_ROW3_SIZE8                  434
#define IDC_ROW3_SIZE9                  435
#define IDC_ROW3_SIZE10                 436
#define IDC_ROW3_SIZE11                 437
#define IDC_ROW3_SIZE12                 438
#define IDC_ROW3_COUNT                  439

#define IDC_ROW4_CHECK                  389
#define IDC_ROW4_SYMBOL                 440
#define IDC_ROW4_NUMBER                 441
#define IDC_ROW4_SIZE1                  442
#define IDC_ROW4_SIZE2                  443
#define IDC_ROW4_SIZE3                  444
#define IDC_ROW4_SIZE4                  445
#define IDC_ROW4_SIZE5                  446
#define IDC_ROW4_SIZE6                  447
#define IDC_ROW4_SIZE7                  448
#define IDC_ROW4_SIZE8                  449
#define IDC_ROW4_SIZE9                  450
#define IDC_ROW4_SIZE10                 451
#define IDC_ROW4_SIZE11                 452
#define IDC_ROW4_SIZE12                 453
#define IDC_ROW4_COUNT                  454

#define IDC_ROW5_CHECK                  390
#define IDC_ROW5_SYMBOL                 455
#define IDC_ROW5_NUMBER                 456
#define IDC_ROW5_SIZE1                  457
#define IDC_ROW5_SIZE2                  458
#define IDC_ROW5_SIZE3                  459
#define IDC_ROW5_SIZE4                  460
#define IDC_ROW5_SIZE5                  461
#define IDC_ROW5_SIZE6                  462
#define IDC_ROW5_SIZE7                  463
#define IDC_ROW5_SIZE8                  464
#define IDC_ROW5_SIZE9                  465
#define IDC_ROW5_SIZE10                 466
#define IDC_ROW5_SIZE11                 467
#define IDC_ROW5_SIZE12                 468
#define IDC_ROW5_COUNT                  469

#define IDC_ROW6_CHECK                  391
#define IDC_ROW6_SYMBOL                 470
#define IDC_ROW6_NUMBER                 471
#define IDC_ROW6_SIZE1                  472
#define IDC_ROW6_SIZE2                  473
#define IDC_ROW6_SIZE3                  474
#define IDC_ROW6_SIZE4                  475
#define IDC_ROW6_SIZE5                  476
#define IDC_ROW6_SIZE6                  477
#define IDC_ROW6_SIZE7                  478
#define IDC_ROW6_SIZE8                  479
#define IDC_ROW6_SIZE9                  480
#define IDC_ROW6_SIZE10                 481
#define IDC_ROW6_SIZE11                 482
#define IDC_ROW6_SIZE12                 483
#define IDC_ROW6_COUNT                  484

// Attribute information (1000).
#define IDC_ATTR_GRID                   1001
#define IDC_RECORD_SYMBOL               1100
#define IDC_WORK_ITEM                   1101
#define IDC_AB_CLASS                    1102
#define IDC_MEMBER                      1103
#define IDC_DIM1                        1104
#define IDC_DIM2                        1105
#define IDC_DIM3                        1106
#define IDC_MATERIAL                    1107
#define IDC_QUANTITY                    1108
#define IDC_DESIGNATION                 1109
#define IDC_REMARKS                     1110
#define IDC_SPECIFICATION               1111
#define IDC_DRAWING_SYMBOL              1202
#define IDC_DIM1_SUFFIX                 1212
#define IDC_DIM2_SUFFIX                 1213
#define IDC_DIM3_SUFFIX                 1214
#define IDC_ATTR_EDIT                   1300
#define IDC_ATTR_ADD                    1301
#define IDC_ATTR_DELETE                 1302
#define IDC_ATTR_UP                     1303
#define IDC_ATTR_DOWN                   1304
#define IDC_ATTR_BACK                   1305
#define IDC_INSERT_ABOVE                1400
#define IDC_INSERT_BELOW                1401
// Labels of the field strip: each has its own id so that it is enabled with its field.
#define IDC_LABEL_RECORD_SYMBOL         1500
#define IDC_LABEL_WORK_ITEM             1501
#define IDC_LABEL_AB_CLASS              1502
#define IDC_LABEL_DRAWING_SYMBOL        1503
#define IDC_LABEL_MEMBER                1504
#define IDC_LABEL_DIM1                  1505
#define IDC_LABEL_DIM2                  1506
#define IDC_LABEL_DIM3                  1507
#define IDC_LABEL_MATERIAL              1508
#define IDC_LABEL_SPECIFICATION         1509
#define IDC_LABEL_QUANTITY              1510
#define IDC_LABEL_DESIGNATION           1511
#define IDC_LABEL_REMARKS               1512

// Takeoff check (2000).
#define IDC_TAKEOFF_LIST                389
#define IDC_LABEL_CINET_CODE            2001
#define IDC_CINET_CODE                  2100
#define IDC_FILE_OUTPUT                 2200
#define IDC_TAKEOFF_MEMBER              2300
#define IDC_USE_CODE                    2301
#define IDC_WORK_CODE                   2302
#define IDC_SUPPLY_CLASS                2303
#define IDC_NIGHT_CLASS                 2304
#define IDC_LINING_CLASS                2305

// File output (3000).
#define IDC_LABEL_CATEGORY              3001
#define IDC_LABEL_SEPARATOR             3002
#define IDC_OUTPUT_GROUP                3003
#define IDC_KIND_TAKEOFF                3100
#define IDC_KIND_AGGREGATE              3101
#define IDC_KIND_CINET                  3102
#define IDC_CATEGORY                    3200
#define IDC_SEPARATOR_COMMA             3303
#define IDC_SEPARATOR_PIPE              3304
#define IDC_SEPARATOR_TAB               3305
