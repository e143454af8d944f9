-- A database as version 1 of its tables was written by the service of then: two users, what they wrote, and a key.
-- SPDX-FileCopyrightText: 2026 The TideLoft developers
-- SPDX-License-Identifier: MIT
PRAGMA foreign_keys=OFF;
BEGIN TRANSACTION;
CREATE TABLE users (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, password TEXT NOT NULL, bio TEXT NOT NULL DEFAULT '', created_at INTEGER NOT NULL);
INSERT INTO users VALUES(1,'alice','scrypt$32768$8$3$nf1Qn4qojvVno5qyvY/FLQ==$aArchjX9zMauwmDzSyB6uqI5eSnmeoDNcH51qnZti4Q=','I sail.',1795351255968);
INSERT INTO users VALUES(2,'bob','scrypt$32768$8$3$cK/0cFGDY33FSltE1i8FCA==$C1QvTFfrL2hI5uTLKx32G6SCHtCIkQWDydQo9BstSpY=','',1795351256448);
CREATE TABLE sessions (token_hash BLOB PRIMARY KEY, user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, expires_at INTEGER NOT NULL) WITHOUT ROWID;
INSERT INTO sessions VALUES(X'56def02a9f31f6a025d7a0981f2d81ab4d871d1a8df2632b3f0834293967147f',2,1797943256667);
INSERT INTO sessions VALUES(X'66fa2ecf8c2a54625cb80e06993d2d801134990e931f84c9e7d85285c7875bed',1,1797943256196);
CREATE TABLE device_keys (user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, device_id TEXT NOT NULL, device_name TEXT NOT NULL, public_key TEXT NOT NULL, updated_at INTEGER NOT NULL, PRIMARY KEY (user_id, device_id)) WITHOUT ROWID;
INSERT INTO device_keys VALUES(1,'d1','Desk','MIIBIjANBgkqhkiG9w0BAQEFAAOCAQ8AMIIBCgKCAQEA3tgN81J38iwNwHMK1nz92QY16UPRupyNrd+l6wx9SeZIs0Zzb5nrcS1CCLKPZ8/hVKbl6u5gxTxguqWyL9sJfIpenEnQR3vhUus7QNSVp5R+EeWoZFyGZ8f63T6W/8LhXyw9icJWedCH2VbznjoEJSTu4kIol75cJgGMUE6eHYlLYhdxaLi4qCsoqHWiyu9qP5G7EMAImy38oKdhtB/tmdI67Pwvpld4z3g5tG8ixz+aVJ+jDe0WfzQZwkYfMmAwv1CXX2KX8BMc7wZONJssZP9qhadG77lHZIQzo9x9za5q3G+78CpAPeWDZAtkko0Ba1xI2Tc8xU7SGrqSLDSyOQIDAQAB',1795351256801);
CREATE TABLE messages (id INTEGER PRIMARY KEY AUTOINCREMENT, sender_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, recipient_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, text TEXT NOT NULL, iv TEXT NOT NULL, recipient_keys TEXT NOT NULL, sender_keys TEXT NOT NULL, encrypted INTEGER NOT NULL, created_at INTEGER NOT NULL);
INSERT INTO messages VALUES(1,1,2,'Y2lwaGVydGV4dCAxIGFuZCB0YWcuLi4uLi4=','bm9uY2Utbm9uY2Ux','[{"deviceId":"d9","encryptedKey":"AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUmJygpKissLS4vMDEyMzQ1Njc4OTo7PD0+P0BBQkNERUZHSElKS0xNTk9QUVJTVFVWV1hZWltcXV5fYGFiY2RlZmdoaWprbG1ub3BxcnN0dXZ3eHl6e3x9fn+AgYKDhIWGh4iJiouMjY6PkJGSk5SVlpeYmZqbnJ2en6ChoqOkpaanqKmqq6ytrq+wsbKztLW2t7i5uru8vb6/wMHCw8TFxsfIycrLzM3Oz9DR0tPU1dbX2Nna29zd3t/g4eLj5OXm5+jp6uvs7e7v8PHy8/T19vf4+fr7/P3+/w=="}]','[]',1,1795351256804);
INSERT INTO messages VALUES(2,1,2,'Y2lwaGVydGV4dCAxIGFuZCB0YWcuLi4uLi4=','bm9uY2Utbm9uY2Ux','[{"deviceId":"d9","encryptedKey":"AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUmJygpKissLS4vMDEyMzQ1Njc4OTo7PD0+P0BBQkNERUZHSElKS0xNTk9QUVJTVFVWV1hZWltcXV5fYGFiY2RlZmdoaWprbG1ub3BxcnN0dXZ3eHl6e3x9fn+AgYKDhIWGh4iJiouMjY6PkJGSk5SVlpeYmZqbnJ2en6ChoqOkpaanqKmqq6ytrq+wsbKztLW2t7i5uru8vb6/wMHCw8TFxsfIycrLzM3Oz9DR0tPU1dbX2Nna29zd3t/g4eLj5OXm5+jp6uvs7e7v8PHy8/T19vf4+fr7/P3+/w=="}]','[]',1,1795351256806);
INSERT INTO messages VALUES(3,2,1,'it''s me 👋','','[]','[]',0,1795351256807);
INSERT INTO messages VALUES(4,2,2,'a note to myself','','[]','[]',0,1795351256808);
CREATE TABLE conversations (user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, peer_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, last_message_id INTEGER NOT NULL REFERENCES messages ON DELETE CASCADE, PRIMARY KEY (user_id, peer_id)) WITHOUT ROWID;
INSERT INTO conversations VALUES(1,2,3);
INSERT INTO conversations VALUES(2,1,3);
INSERT INTO conversations VALUES(2,2,4);
DELETE FROM sqlite_sequence;
INSERT INTO sqlite_sequence VALUES('messages',4);
CREATE INDEX sessions_by_expiry ON sessions (expires_at);
CREATE INDEX messages_by_pair ON messages (sender_id, recipient_id, id);
CREATE INDEX messages_by_recipient ON messages (recipient_id);
COMMIT;
PRAGMA user_version = 1;
